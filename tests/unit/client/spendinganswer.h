// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDomDocument>
#include <QDomText>
#include <QList>
#include <QString>

#include <vector>

namespace tests {

/// What the spreading of points reads of a goods line.
struct SpendingLine
{
    int position = 0;
    double allowance = 0;
};

/// An answer with a number of goods lines whose positions and allowances can be set again and
/// again, since building a document costs more than spreading an amount over it.
class SpendingAnswer
{
public:
    explicit SpendingAnswer(std::size_t lines);

    /// Writes the lines, as many as the answer has, with as many digits as tell a double from
    /// every other.
    void set(const std::vector<SpendingLine>& lines);
    QDomDocument document() const { return answer; }

private:
    QDomText addText(QDomElement& parent, const QString& name);

    QDomDocument answer;
    QList<QDomText> positions;
    QList<QDomText> allowances;
};

} // namespace tests
