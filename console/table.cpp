// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/table.h"

#include "console/printable.h"

#include <QChar>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace console {
namespace {

constexpr qsizetype gap = 2;

qsizetype totalOf(const QList<qsizetype>& widths)
{
    return std::accumulate(widths.cbegin(), widths.cend(),
                           gap * std::max<qsizetype>(0, widths.size() - 1));
}

qsizetype longestWord(const QString& text)
{
    qsizetype longest = 0;
    for (const QString& word : text.split(u' ')) {
        longest = std::max(longest, Table::widthOf(word));
    }
    return longest;
}

QString withoutBlanksAtEnd(QString line)
{
    while (line.endsWith(u' ')) {
        line.chop(1);
    }
    return line;
}

/// The least widths, and of the room that is left each column from the left what it can use.
QList<qsizetype> spread(QList<qsizetype> widths, const QList<qsizetype>& natural, qsizetype room)
{
    qsizetype spare = room - totalOf(widths);
    for (qsizetype i = 0; i < widths.size() && spare > 0; ++i) {
        const qsizetype more = std::min(spare, natural.at(i) - widths.at(i));
        widths[i] += more;
        spare -= more;
    }
    return widths;
}

} // namespace

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
        row.append(printable::line(cell));
    }
    rows.append(row);
}

QStringList Table::brokenBetweenWords(const QString& text, qsizetype width)
{
    return printable::wrapped(text, std::max(width, longestWord(text)));
}

QString Table::text(qsizetype width) const
{
    QStringList titles;
    QList<qsizetype> shown;
    for (const Column& column : columns) {
        shown.append(titles.size());
        titles.append(column.title);
    }
    QList<qsizetype> widths = naturalWidths(shown);
    const bool isNarrow = totalOf(widths) > width;
    QString indent;
    if (isNarrow) {
        shown = columnsStanding(Narrow::InRow);
        indent = QString(columnsStanding(Narrow::Above).isEmpty() ? 0 : 2 * gap, u' ');
        const qsizetype left = width - indent.size();
        const QList<qsizetype> least = leastWidths(shown);
        if (totalOf(least) > left) {
            return sentences(width);
        }
        widths = spread(least, naturalWidths(shown), left);
    }
    QString text;
    for (qsizetype i = titled ? -1 : 0; i < rows.size(); ++i) {
        const QStringList& cells = i < 0 ? titles : rows.at(i);
        text += isNarrow ? ownLines(cells, Narrow::Above, QString(gap, u' '), width) : QString();
        text += rowText(cells, shown, widths, indent);
        text +=
            isNarrow ? ownLines(cells, Narrow::Below, QString(2 * gap, u' '), width) : QString();
    }
    return text;
}

QList<qsizetype> Table::columnsStanding(Narrow where) const
{
    QList<qsizetype> found;
    for (qsizetype i = 0; i < columns.size(); ++i) {
        if (columns.at(i).narrow == where) {
            found.append(i);
        }
    }
    return found;
}

QList<qsizetype> Table::naturalWidths(const QList<qsizetype>& of) const
{
    QList<qsizetype> widths;
    for (const qsizetype i : of) {
        qsizetype width = widthOf(columns.at(i).title);
        for (const QStringList& row : rows + room) {
            width = std::max(width, widthOf(row.value(i)));
        }
        widths.append(width);
    }
    return widths;
}

QList<qsizetype> Table::leastWidths(const QList<qsizetype>& of) const
{
    QList<qsizetype> widths;
    for (const qsizetype i : of) {
        qsizetype width = longestWord(columns.at(i).title);
        for (const QStringList& row : rows + room) {
            width = std::max(width, longestWord(row.value(i)));
        }
        widths.append(width);
    }
    return widths;
}

/// A row, of as many lines as its highest cell.
QString Table::rowText(const QStringList& cells, const QList<qsizetype>& of,
                       const QList<qsizetype>& widths, const QString& indent) const
{
    QList<QStringList> broken;
    qsizetype height = 1;
    for (qsizetype i = 0; i < of.size(); ++i) {
        const QString cell = cells.value(of.at(i));
        broken.append(widthOf(cell) <= widths.at(i) ? QStringList{cell}
                                                    : brokenBetweenWords(cell, widths.at(i)));
        height = std::max(height, broken.last().size());
    }
    QString text;
    for (qsizetype line = 0; line < height; ++line) {
        QString row = indent;
        for (qsizetype i = 0; i < of.size(); ++i) {
            const QString cell = broken.at(i).value(line);
            const QString padding(std::max<qsizetype>(0, widths.at(i) - widthOf(cell)), u' ');
            row += i == 0 ? QString() : QString(gap, u' ');
            row += columns.at(of.at(i)).align == Align::Right ? padding + cell : cell + padding;
        }
        text += withoutBlanksAtEnd(row) + u'\n';
    }
    return text;
}

/// Never without an indent: a text from outside on a line of its own must not look like an answer.
QString Table::ownLines(const QStringList& cells, Narrow where, const QString& indent,
                        qsizetype width) const
{
    QStringList filled;
    for (const qsizetype i : columnsStanding(where)) {
        if (!cells.value(i).isEmpty()) {
            filled.append(cells.value(i));
        }
    }
    QString text;
    if (!filled.isEmpty()) {
        for (const QString& line :
             brokenBetweenWords(filled.join(u", "_s), width - indent.size())) {
            text += indent + line + u'\n';
        }
    }
    return text;
}

QString Table::sentences(qsizetype width) const
{
    const QString indent(gap, u' ');
    QString text;
    for (const QStringList& row : rows) {
        QStringList parts;
        for (qsizetype i = 0; i < columns.size(); ++i) {
            const QString title = columns.at(i).title;
            const QString cell = row.value(i);
            if (!cell.isEmpty()) {
                parts.append(title.isEmpty() ? cell : title + u": "_s + cell);
            }
        }
        bool isFirst = true;
        for (const QString& line : brokenBetweenWords(parts.join(u", "_s), width - gap)) {
            text += (isFirst ? QString() : indent) + line + u'\n';
            isFirst = false;
        }
    }
    return text;
}

} // namespace console
