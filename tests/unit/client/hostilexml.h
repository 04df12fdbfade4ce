// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "client/harmlessxml.h"
#include "client/xmllimits.h"

#include <QByteArray>
#include <QString>

/// Texts at and beyond the limits of what may be given to the parser.
namespace tests {

using namespace Qt::StringLiterals;

constexpr int levelLimit = 512;
constexpr int attributeLimit = 64;
constexpr int nodeLimit = 275'000;
constexpr int elementLimit = 200'000;
constexpr int entryLimit = 10'500;
constexpr int characterLimit = 5'700'000;
constexpr qint64 escapeMoveLimit = 250'000'000;
/// So many escapes in a text of nothing else: 6,454 x 6 x 6,454 is just below the limit on moves.
constexpr int escapeLimit = 6'454;

/// Whether the parser gets the text.
template <typename Text>
bool isHarmless(const Text& text)
{
    return orva::harmInXml(text).isEmpty();
}

/// An element in an element, so many levels deep.
inline QString nested(int levels)
{
    return u"<a>"_s.repeated(levels) + u"</a>"_s.repeated(levels);
}

/// One element with so many attributes.
inline QString withAttributes(int count)
{
    QString text = u"<a"_s;
    for (int i = 0; i < count; ++i) {
        text += u" x%1=\"1\""_s.arg(i);
    }
    return text + u"/>"_s;
}

/// One element whose text repeats the piece.
inline QString withText(const QString& piece, int count)
{
    return u"<a>"_s + piece.repeated(count) + u"</a>"_s;
}

/// One element with an attribute whose value repeats the piece between the quotes given.
inline QString withValue(const QString& piece, int count, QChar quote = u'"')
{
    return u"<a x="_s + quote + piece.repeated(count) + quote + u"/>"_s;
}

} // namespace tests
