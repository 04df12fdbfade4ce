// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDomElement>
#include <QSharedPointer>
#include <QString>

class XmlWrapper;

namespace orva {

/// Why an answer's goods lines may not be used, a clause in Russian that names limit and line;
/// empty when they may.
///
/// Each line grants awards to the position that it names, and a confirmation reports all that a
/// position used in each of its lines: lines of one position cost the square of their number.
/// @param root of the answer; may be null
QString harmInLines(const QSharedPointer<XmlWrapper>& xml, const QDomElement& root);

} // namespace orva
