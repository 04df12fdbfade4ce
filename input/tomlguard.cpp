// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "input/tomlguard.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace input {
namespace {

/// Follows brackets, dots and quotes of a text as far as its levels need it.
class LevelScanner
{
public:
    explicit LevelScanner(std::string_view toml) : text(toml) {}

    /// The line on which the levels become too many; 0 where they do not.
    qint64 lineTooDeep()
    {
        while (at < text.size()) {
            if (!step(text[at])) {
                return line;
            }
        }
        return 0;
    }

private:
    /// Of the key or value that is read. A number has a dot as well; it counts one at most, as the
    /// commas begin anew.
    int level() const { return (open.empty() ? header : open.back()) + dots + 1; }

    /// @return whether the levels are still few enough
    bool step(char character)
    {
        switch (character) {
        case '"':
        case '\'':
            passText(character);
            return true;
        case '#':
            at = std::min(text.find('\n', at), text.size());
            return true;
        case '\n':
            endLine();
            break;
        case '[':
        case '{':
            return pass(enter());
        case ']':
        case '}':
            leave();
            break;
        case '.':
            ++dots;
            return pass(level());
        case ',':
            dots = 0;
            break;
        case '=':
            inValue = true;
            return pass(level());
        default:
            break;
        }
        return pass(0);
    }

    bool pass(int reached)
    {
        ++at;
        return reached <= maximumTomlLevels;
    }

    void endLine()
    {
        ++line;
        if (open.empty()) {
            if (inHeader) {
                header = dots + 1;
            }
            inHeader = false;
            inValue = false;
        }
        // within brackets a line's end separates values as a comma does
        dots = 0;
    }

    /// @return the level that has begun
    int enter()
    {
        if (open.empty() && !inValue) {
            inHeader = true; // the bracket of [table], or both of [[table]]
            header = 0;
            return level();
        }
        open.push_back(level());
        dots = 0;
        return open.back();
    }

    void leave()
    {
        if (!open.empty()) {
            open.pop_back();
            dots = 0;
        }
    }

    /// From one quote behind the other; three of them may have lines between.
    void passText(char quote)
    {
        const bool isLong = text.substr(at, 3) == std::string_view(quote == '"' ? "\"\"\"" : "'''");
        at += isLong ? 3 : 1;
        for (; at < text.size(); ++at) {
            const char character = text[at];
            if (character == '\\' && quote == '"') {
                countLine(++at);
            } else if (character == quote && (!isLong || endsHere(quote))) {
                at += isLong ? 3 : 1;
                // a long text may end in one or two quotes of its own
                while (isLong && at < text.size() && text[at] == quote) {
                    ++at;
                }
                return;
            } else if (character == '\n' && !isLong) {
                return; // an error at which the parser stops
            } else {
                countLine(at);
            }
        }
    }

    bool endsHere(char quote) const
    {
        return at + 2 < text.size() && text[at + 1] == quote && text[at + 2] == quote;
    }

    void countLine(size_t place) { line += place < text.size() && text[place] == '\n' ? 1 : 0; }

    std::string_view text;
    size_t at = 0;
    qint64 line = 1;
    /// Levels of the present [table], of each open bracket, and dots of the present key.
    int header = 0;
    std::vector<int> open;
    int dots = 0;
    bool inHeader = false;
    bool inValue = false;
};

} // namespace

toml::table parseToml(const QByteArray& text)
{
    if (text.size() > maximumTomlBytes) {
        throw TomlRefused(TomlRefused::Limit::Bytes, 0);
    }
    const std::string_view view(text.constData(), static_cast<size_t>(text.size()));
    const qint64 line = LevelScanner(view).lineTooDeep();
    if (line > 0) {
        throw TomlRefused(TomlRefused::Limit::Levels, line);
    }
    return toml::parse(view);
}

} // namespace input
