// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <exception>

class QFileDevice;

namespace till {

/// What an exception says to people: the host's own text, or what().
QString reasonOf(const std::exception& error);
/// Why a file could not be written. A full disk takes a part of what is written and reports no
/// error.
QString reasonOf(const QFileDevice& file);

} // namespace till
