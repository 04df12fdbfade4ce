// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

#include <stdexcept>
#include <toml++/toml.h>

namespace input {

/// Bytes of a TOML text; a check of ten thousand lines has two million.
inline constexpr qint64 maximumTomlBytes = 4 * 1024 * 1024;
/// Tables and lists within one another, however they are written: the parts of [a.b] and of a key
/// c.d count one each, and so does every bracket. What the programs read has four.
inline constexpr int maximumTomlLevels = 64;

/// A TOML text that the parser is not given.
class TomlRefused : public std::runtime_error
{
public:
    enum class Limit
    {
        Bytes,
        Levels,
    };

    TomlRefused(Limit passed, qint64 lineOfIt)
        : std::runtime_error("TOML beyond the limits"), exceeded(passed), place(lineOfIt)
    {}

    Limit limit() const { return exceeded; }
    /// Where the limit on levels is passed, from 1.
    qint64 line() const { return place; }

private:
    Limit exceeded;
    qint64 place;
};

/// The table of a text: the programs' only way to the parser, which recurses over levels without
/// looking at the stack. Up to the first error the guard and the parser see the same brackets and
/// dots; a text that is merely wrong is the parser's business.
/// @throws TomlRefused; toml::parse_error
toml::table parseToml(const QByteArray& text);

} // namespace input
