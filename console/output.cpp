// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/output.h"

#include "console/printable.h"
#include "console/text.h"

#include <cerrno>

using namespace Qt::StringLiterals;

namespace console {
namespace {

constexpr QLatin1StringView toLineStart("\r");
constexpr QLatin1StringView clearToLineEnd("\033[K");

} // namespace

Output::~Output() = default;

void Output::put(const QString& text)
{
    if (stream == nullptr || !isWhole()) {
        return;
    }
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<size_t>(bytes.size());
    errno = 0;
    if (std::fwrite(bytes.constData(), 1, size, stream) != size || std::fflush(stream) != 0) {
        systemError = errno != 0 ? errno : EIO;
    }
}

void Output::write(const QString& text)
{
    put(printable::lines(text));
}

void Output::line(const QString& text)
{
    put(printable::line(text) + u'\n');
}

void Output::line(const QString& word, Colour colour, const QString& rest)
{
    put(shown({word, colour}) + u' ' + printable::line(rest) + u'\n');
}

void Output::draw(const QList<Piece>& pieces)
{
    QString text = toLineStart;
    for (const Piece& piece : pieces) {
        text += shown(piece);
    }
    put(text + clearToLineEnd);
}

QString Output::shown(const Piece& piece) const
{
    const QString text = printable::line(piece.text);
    return piece.colour && terminal::hasColours(stream) ? terminal::painted(text, *piece.colour)
                                                        : text;
}

bool Output::isUnread() const
{
    return systemError == EPIPE;
}

QString Output::trouble() const
{
    return isWhole() ? QString()
                     : Text::tr("the standard output cannot be written (%1)")
                           .arg(qt_error_string(systemError));
}

} // namespace console
