// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/output.h"

using namespace Qt::StringLiterals;

namespace till {

Output::~Output() = default;

void Output::write(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    std::fflush(stream);
}

void Output::done(const QString& text)
{
    if (!quiet) {
        line(text);
    }
}

void Output::notes(const QStringList& notices)
{
    for (const QString& notice : notices) {
        // scripts look for the word, so it is the same in every language
        line(painted(u"note:"_s, Colour::Yellow) + u' ' + notice);
    }
}

void Output::failure(const QString& sentence)
{
    line(painted(u"orva-till:"_s, Colour::Red) + u' ' + sentence);
}

QString Output::painted(const QString& text, Colour colour) const
{
    return console::terminal::hasColours(stream) ? console::terminal::painted(text, colour) : text;
}

} // namespace till
