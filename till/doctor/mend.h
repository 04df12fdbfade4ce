// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

namespace till::doctor {

/// What puts right what a check has found.
struct Mend
{
    enum class Kind
    {
        None,
        Command, ///< of a shell, as it stands
        Line,    ///< of a file, as it stands; now and then two: a table's head and its key
        Words,   ///< a person has to find something out, to decide or to go somewhere
    };
    /// Where a line belongs.
    enum class Place
    {
        Instead, ///< of the line with that number
        Behind,  ///< the line with that number
        AtEnd,   ///< of the file
    };

    Kind kind = Kind::None;
    QString text;
    /// Absolute; of a line where it belongs, of a command whose content it changes, or empty.
    QString file = {};
    Place place = Place::AtEnd;
    int number = 0; ///< of the line, from 1
    /// Whether it may be applied unseen: it takes rights from others or gives them to the owner, or
    /// changes a line whose meaning is certain. Nothing is sent, no record is touched, and no value
    /// is guessed.
    bool isSafe = false;

    static Mend command(const QString& text, const QString& changedFile = {})
    {
        return {.kind = Kind::Command, .text = text, .file = changedFile};
    }
    static Mend words(const QString& text) { return {.kind = Kind::Words, .text = text}; }
    static Mend line(const QString& text, const QString& file, Place place, int number = 0)
    {
        return {.kind = Kind::Line, .text = text, .file = file, .place = place, .number = number};
    }
    Mend safe() const
    {
        Mend mend = *this;
        mend.isSafe = kind == Kind::Command || kind == Kind::Line;
        return mend;
    }

    bool isNone() const { return kind == Kind::None; }
    /// As it is printed: "-> " before what can be pasted, a line for each of a file's lines behind
    /// the one that says where they belong; "by hand: " before words.
    QStringList lines() const;
    /// For programs: "", "command", "line" or "words".
    QString kindName() const;
    /// For programs: "", "instead", "behind" or "end".
    QString placeName() const;
    /// The file's content with the lines in it.
    QByteArray appliedTo(const QByteArray& content) const;
};

} // namespace till::doctor
