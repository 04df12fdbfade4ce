// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/element.h"

#include <QByteArray>

namespace simulator {

/// Reads an XML document in UTF-8. Attributes and comments are dropped, so is text that consists
/// of blanks only or stands beside child elements.
/// Of one piece of text the parser takes 10,000,000 bytes.
/// Throws Rejection with status 400 and the reason when the body is empty, is not UTF-8 or declares
/// something else, is not well-formed or is beyond the limits of xmlguard.h.
Document readXml(const QByteArray& body);

} // namespace simulator
