// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QList>

/// Texts that cost a parser its stack.
namespace tests {

/// A key of so many parts.
inline QByteArray dotted(int parts)
{
    return QByteArray("a.").repeated(parts - 1) + 'a';
}

/// 40,000 levels in eighty kilobytes, in every way that TOML has for them.
inline QList<QByteArray> deepToml()
{
    constexpr int levels = 40'000;
    const QByteArray key = dotted(levels);
    return {
        key + " = 1\n",
        '[' + key + "]\n",
        "[[" + key + "]]\n",
        "a = { " + key + " = 1 }\n",
        "a = " + QByteArray("[").repeated(levels) + QByteArray("]").repeated(levels) + '\n',
        "a = " + QByteArray("{a=").repeated(levels) + '1' + QByteArray("}").repeated(levels) + '\n',
        QByteArray("'a'.").repeated(levels) + "b = 1\n",
        QByteArray("\"a\" . ").repeated(levels) + "b = 1\n",
    };
}

} // namespace tests
