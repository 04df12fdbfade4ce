// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <cstdio>

/// What a stream can show.
namespace console::terminal {

enum class Colour
{
    Red,
    Green,
    Yellow,
};

/// Whether somebody sits at it; a file or a pipe is no terminal.
bool isTerminal(std::FILE* stream);
/// Whether it is a terminal on which a line can be drawn anew; a file or a pipe is none, and
/// neither is a terminal that calls itself "dumb" in TERM.
bool canRedraw(std::FILE* stream);
/// Whether texts for it may have colours: it can redraw, and NO_COLOR is unset or empty.
bool hasColours(std::FILE* stream);
/// How many characters fit on a line of it; 80 where that is not known.
int columns(std::FILE* stream);

/// The text in a colour, for a stream that has them.
QString painted(const QString& text, Colour colour);

} // namespace console::terminal
