// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDomElement>
#include <QList>
#include <QString>

class XmlWrapper;

namespace orva {

/// The answer's lines, in document order.
QList<QDomElement> answerLines(const XmlWrapper& xml, const QDomElement& root);

/// The goods position of an answer's line; 0 when its "id" is missing, no number or beyond int.
int linePosition(const XmlWrapper& xml, const QDomElement& line);

/// An amount among a line's first awards, in currency units; 0 when it is missing or no number.
double lineAward(const XmlWrapper& xml, const QDomElement& line, const QString& name);

} // namespace orva
