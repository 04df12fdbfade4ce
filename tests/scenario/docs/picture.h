// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

/// An include in the project of one of its own headers.
struct Include
{
    QString source; ///< path of the file in which it stands
    QString header; ///< as it is written
};

/// Every include of the project's own headers below these folders.
QList<Include> includesBelow(const QStringList& folders);

/// The picture of rooms and arrows in docs/architecture.md. Every question is answered by what is
/// wrong, a sentence each that says what to do.
class Picture
{
public:
    /// @param markdown with one block of the kind "rooms"
    explicit Picture(const QString& markdown);

    QStringList rooms() const { return places; }
    qsizetype arrowCount() const { return arrows.size(); }
    /// The room that a file stands in; empty when there is none.
    QString roomOf(const QString& path) const;

    /// Includes that no arrow allows.
    QStringList forbidden(const QList<Include>& includes) const;
    /// Arrows that no include needs.
    QStringList unused(const QList<Include>& includes) const;
    /// Arrows that lead upwards or nowhere, and what is no arrow.
    QStringList misdrawn() const;

private:
    struct Arrow
    {
        QString from;
        QString to; ///< a room or a group
    };

    void readLine(const QString& line);
    QStringList membersOf(const QString& name) const;

    QStringList places;    ///< from the top to the bottom
    QSet<QString> divided; ///< rooms below which others stand
    QHash<QString, QStringList> groups;
    QList<Arrow> arrows;
    QStringList unreadable; ///< lines with another arrow than the only one
};
