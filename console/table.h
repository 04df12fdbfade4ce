// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <limits>

namespace console {

/// Text in aligned columns, two blanks apart. Widths are counted in characters that take a place:
/// code points without combining marks.
class Table
{
public:
    enum class Align
    {
        Left,
        Right,
    };

    /// Where a cell stands when the rows are wider than there is room.
    enum class Narrow
    {
        InRow, ///< stays in the row
        Above, ///< on an indented line above the rest of the row, which is indented more
        Below, ///< on an indented line below the rest of the row
    };

    struct Column
    {
        QString title;
        Align align = Align::Left;
        Narrow narrow = Narrow::InRow;
    };

    explicit Table(const QList<Column>& titles) : columns(titles) {}

    /// Adds a row; missing cells are empty. Each cell is made one printable line.
    void addRow(const QStringList& cells);
    /// Makes the columns as wide as for this row, which is not shown: tables of many rows are
    /// written in parts that look like one.
    void addRoom(const QStringList& cells) { room.append(cells); }
    /// Whether the titles stand above the rows; otherwise this goes on where another part ended.
    void setTitled(bool shown) { titled = shown; }
    /// The titles and the rows, a line each, without blanks at the ends of lines. Where that is
    /// wider than there is room, columns go above or below the others, then titles and texts break
    /// between words, and at last each row becomes sentences of titles and cells. A single word
    /// that is wider than all room stays whole.
    /// @param width how many characters fit on a line
    QString text(qsizetype width = std::numeric_limits<int>::max()) const;

    /// Lines of at most so many characters, broken between words only: half a path or amount would
    /// be read as a whole one. A word that is wider stays whole.
    static QStringList brokenBetweenWords(const QString& text, qsizetype width);
    /// How many places a text takes.
    static qsizetype widthOf(const QString& text);

private:
    QList<qsizetype> naturalWidths(const QList<qsizetype>& of) const;
    QList<qsizetype> leastWidths(const QList<qsizetype>& of) const;
    QList<qsizetype> columnsStanding(Narrow where) const;
    QString rowText(const QStringList& cells, const QList<qsizetype>& of,
                    const QList<qsizetype>& widths, const QString& indent) const;
    QString ownLines(const QStringList& cells, Narrow where, const QString& indent,
                     qsizetype width) const;
    QString sentences(qsizetype width) const;

    QList<Column> columns;
    QList<QStringList> rows;
    QList<QStringList> room; ///< counts for the widths only
    bool titled = true;
};

} // namespace console
