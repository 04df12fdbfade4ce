// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/element.h"

#include <QByteArray>

namespace simulator {

/// Writes a document in UTF-8 without an XML declaration, one blank of indentation a level.
/// The same tree always gives the same bytes.
QByteArray writeXml(const Element& root);

/// The SHA-256 of writeXml(root), by which two documents are told apart.
QByteArray xmlDigest(const Element& root);

} // namespace simulator
