// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/terminal.h"

#include <QList>
#include <QString>

#include <atomic>
#include <cstdio>
#include <optional>

namespace console {

/// The one way out to a stream: all that a program prints goes through here, in UTF-8 whatever the
/// locale, and is handed on at once. Texts are made printable on the way (printable.h), so no
/// text from outside steers a terminal; colours and lines drawn anew are this class's own doing.
/// What cannot be written is remembered and told at the end. May be used from several threads.
class Output
{
public:
    using Colour = terminal::Colour;

    /// A text, in a colour where the stream has colours.
    struct Piece
    {
        QString text;
        std::optional<Colour> colour = std::nullopt;
    };

    /// @param target stays the caller's; null: nothing is written
    explicit Output(std::FILE* target) : stream(target) {}
    virtual ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Whole lines, or JSON. The line breaks in it stay: what may hold foreign ones goes through
    /// printable::line first.
    void write(const QString& text);
    /// One line, whatever the text holds.
    void line(const QString& text);
    /// One line that begins with a word in a colour.
    void line(const QString& word, Colour colour, const QString& rest);
    /// Draws a line in the place of the one drawn before; nothing clears it. Only for a stream that
    /// can redraw.
    void draw(const QList<Piece>& pieces);

    /// Whether all was written so far. After a failure nothing more is.
    bool isWhole() const { return systemError == 0; }
    /// Whether it is that nobody reads any more, who then knows why there is no more to read.
    bool isUnread() const;
    /// Why it is not whole, as half a sentence; empty when it is.
    QString trouble() const;

    /// Whether a line can be drawn anew, so that a progress bar is one.
    bool canRedraw() const { return terminal::canRedraw(stream); }
    /// How many characters fit on a line.
    int columns() const { return terminal::columns(stream); }

protected:
    /// Writes what has been made printable.
    virtual void put(const QString& text);

private:
    QString shown(const Piece& piece) const;

    std::FILE* const stream;
    std::atomic<int> systemError = 0;
};

} // namespace console
