// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/abstractdocument.h"

#include <QByteArray>

namespace protocol {

/// The last answer of the server as the plug-in keeps it in the document; empty when it keeps none.
/// It says what the server's answer said, but is written anew: its lines are its own.
QByteArray keptAnswer(const AbstractDocument& document);

} // namespace protocol
