// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/terminal.h"

#include <QString>
#include <QStringList>

#include <cstdio>

namespace till {

/// Writes texts to a stream, in UTF-8 whatever the locale, and hands them on at once.
class Output
{
public:
    using Colour = console::terminal::Colour;

    explicit Output(std::FILE* target) : stream(target) {}
    virtual ~Output();

    virtual void write(const QString& text);
    void line(const QString& text) { write(text + u'\n'); }
    /// A line that only says that something was done; not written with --quiet.
    void done(const QString& text);
    /// A line "note: …" for each.
    void notes(const QStringList& notices);
    /// A line "orva-till: …" about what went wrong.
    void failure(const QString& sentence);

    /// Leaves out what done() says, and progress.
    void setQuiet(bool isQuiet) { quiet = isQuiet; }
    bool isQuiet() const { return quiet; }

    /// Whether a line can be drawn anew, so that a progress bar is one.
    bool canRedraw() const { return console::terminal::canRedraw(stream); }
    /// How many characters fit on a line.
    int columns() const { return console::terminal::columns(stream); }
    /// The text in a colour where the stream has colours, otherwise as it is.
    QString painted(const QString& text, Colour colour) const;

private:
    std::FILE* stream;
    bool quiet = false;
};

} // namespace till
