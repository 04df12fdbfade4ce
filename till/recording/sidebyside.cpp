// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/sidebyside.h"

#include "console/printable.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

constexpr qsizetype columnWidth = 72;
const QString indent = u"   "_s;

/// The lines with their numbers; what is longer than the width goes on in the next row.
QStringList rowsOf(const QString& text, qsizetype width)
{
    QStringList rows;
    QStringList lines = console::printable::lines(text).split(u'\n');
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QString number = QString::number(i + 1);
        QString rest = lines.at(i);
        do {
            rows.append(number.rightJustified(4) + u' ' + rest.left(width));
            rest = rest.mid(width);
            number.clear();
        } while (!rest.isEmpty());
    }
    return rows;
}

qsizetype widest(const QStringList& rows, qsizetype atLeast)
{
    qsizetype width = atLeast;
    for (const QString& row : rows) {
        width = std::max(width, row.size());
    }
    return width;
}

QString trimmedEnd(QString row)
{
    while (row.endsWith(u' ')) {
        row.chop(1);
    }
    return row + u'\n';
}

} // namespace

QString sidebyside::columns(const QString& leftTitle, const QString& left,
                            const QString& rightTitle, const QString& right)
{
    const QStringList leftRows = rowsOf(left, columnWidth);
    const QStringList rightRows = rowsOf(right, columnWidth);
    const qsizetype width = widest(leftRows, leftTitle.size() + 5);
    const auto row = [width](const QString& one, const QString& other) {
        return trimmedEnd(indent + one.leftJustified(width) + u" | "_s + other);
    };
    QString text = row(u"     "_s + leftTitle, u"     "_s + rightTitle);
    for (qsizetype i = 0; i < std::max(leftRows.size(), rightRows.size()); ++i) {
        text += row(leftRows.value(i), rightRows.value(i));
    }
    return text;
}

QString sidebyside::numbered(const QString& text)
{
    QString result;
    const QStringList rows = rowsOf(text, 2 * columnWidth);
    for (const QString& row : rows) {
        result += trimmedEnd(indent + row);
    }
    return result;
}

} // namespace till
