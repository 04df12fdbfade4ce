// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/tr.h"

#include <QString>
#include <QStringList>

#include <exception>

class Config;
class QFileDevice;

namespace till {

/// What the host says, in the language of this program; a plug-in's own text as it stands.
QString said(const poshost::Message& message);
/// The same.
QString said(const tr::Tr& text);
/// What a configuration's loading noticed and let pass.
QStringList noticesOf(const Config& config);
/// What an exception says to people: the host's own text, or what().
QString reasonOf(const std::exception& error);
/// Why a file could not be written. A full disk takes a part of what is written and reports no
/// error.
QString reasonOf(const QFileDevice& file);

} // namespace till
