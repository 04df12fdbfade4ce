// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace console {

bool terminal::isTerminal(std::FILE* stream)
{
    return stream != nullptr && ::isatty(::fileno(stream)) == 1;
}

bool terminal::canRedraw(std::FILE* stream)
{
    return isTerminal(stream) && qgetenv("TERM") != "dumb";
}

bool terminal::hasColours(std::FILE* stream)
{
    return canRedraw(stream) && qEnvironmentVariableIsEmpty("NO_COLOR");
}

int terminal::columns(std::FILE* stream)
{
    constexpr int usual = 80;
    winsize size{};
    const bool known = stream != nullptr && ::ioctl(::fileno(stream), TIOCGWINSZ, &size) == 0;
    return known && size.ws_col > 0 ? size.ws_col : usual;
}

QString terminal::painted(const QString& text, Colour colour)
{
    const int code = colour == Colour::Red ? 31 : colour == Colour::Green ? 32 : 33;
    return u"\033[%1m%2\033[0m"_s.arg(code).arg(text);
}

} // namespace console
