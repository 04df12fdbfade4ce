// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace till {

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

    struct Column
    {
        QString title;
        Align align = Align::Left;
    };

    explicit Table(const QList<Column>& titles) : columns(titles) {}

    /// Adds a row; missing cells are empty. Each cell is made one printable line.
    void addRow(const QStringList& cells);
    /// The titles and the rows, a line each, without blanks at the ends of lines.
    QString text() const;

    /// How many places a text takes.
    static qsizetype widthOf(const QString& text);

private:
    QString rowText(const QStringList& cells, const QList<qsizetype>& widths) const;

    QList<Column> columns;
    QList<QStringList> rows;
};

} // namespace till
