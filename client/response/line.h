// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDomElement>
#include <QList>
#include <QSharedPointer>
#include <QString>

class XmlWrapper;

namespace orva {

/// The answer's lines, in document order.
QList<QDomElement> answerLines(const QSharedPointer<XmlWrapper>& xml, const QDomElement& root);

/// The goods position of an answer's line; 0 when its "id" is missing, no number or beyond int.
int linePosition(const QSharedPointer<XmlWrapper>& xml, const QDomElement& line);

/// Where a line has the award of that name.
QList<QString> awardPath(const QString& name);

/// An amount of a line, in currency units; 0 when it is missing or no number.
/// @param path made once by awardPath: lines are many
double lineAmount(const QSharedPointer<XmlWrapper>& xml, const QDomElement& line,
                  const QList<QString>& path);

} // namespace orva
