// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/table.h"

#include "console/printable.h"

#include <QChar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {

qsizetype Table::widthOf(const QString& text)
{
    const QList<uint> codePoints = text.toUcs4();
    return std::count_if(codePoints.cbegin(), codePoints.cend(), [](uint codePoint) {
        const auto category = QChar::category(char32_t(codePoint));
        return category != QChar::Mark_NonSpacing && category != QChar::Mark_Enclosing;
    });
}

void Table::addRow(const QStringList& cells)
{
    QStringList row;
    for (const QString& cell : cells) {
        row.append(console::printable::line(cell));
    }
    rows.append(row);
}

QString Table::rowText(const QStringList& cells, const QList<qsizetype>& widths) const
{
    QString text;
    for (qsizetype i = 0; i < columns.size(); ++i) {
        const QString cell = cells.value(i);
        const QString padding(widths.at(i) - widthOf(cell), u' ');
        text += i == 0 ? QString() : u"  "_s;
        text += columns.at(i).align == Align::Right ? padding + cell : cell + padding;
    }
    while (text.endsWith(u' ')) {
        text.chop(1);
    }
    return text + u'\n';
}

QString Table::text() const
{
    QStringList titles;
    QList<qsizetype> widths;
    for (qsizetype i = 0; i < columns.size(); ++i) {
        titles.append(columns.at(i).title);
        qsizetype width = widthOf(columns.at(i).title);
        for (const QStringList& row : rows) {
            width = std::max(width, widthOf(row.value(i)));
        }
        widths.append(width);
    }
    QString text = rowText(titles, widths);
    for (const QStringList& row : rows) {
        text += rowText(row, widths);
    }
    return text;
}

} // namespace till
