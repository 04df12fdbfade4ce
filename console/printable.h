// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

/// Texts from outside (a server's, a file's, the command line's) made fit to be shown. What could
/// steer a terminal or make a line look like another one is written as its code, "\u001b": the
/// control characters C0, DEL and C1, those that turn the direction of writing, and the separators
/// U+2028 and U+2029. In JSON that is the same text to whoever reads it.
namespace console::printable {

/// Lines stay lines; "\r\n" counts as one line break and a tab becomes a blank.
QString lines(const QString& text);

/// All in one line: a blank stands where line breaks were, whichever they are.
QString line(const QString& text);

/// Lines of at most so many characters, broken between words where there are any; breaks in the
/// text are kept.
QStringList wrapped(const QString& text, qsizetype width);

/// Several lines, each of at most so many characters; what does not fit on its line goes on below
/// it, indented, so that it does not look like a line of its own.
QString folded(const QString& lines, qsizetype width);

/// One value of a line of comma-separated values: quoted where it holds a comma or a quote.
QString csv(const QString& value);

} // namespace console::printable
