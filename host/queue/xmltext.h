// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QByteArray>
#include <QString>

/// What an XML text says about its own encoding, and what its bytes really are.
///
/// A text that was read in one encoding and is kept as characters still declares that encoding;
/// sent as UTF-8 it would be read as something else. Nothing here judges whether a text is
/// well-formed, and nothing looks behind its declaration.
namespace poshost::xmltext {

/// The same text with a declaration that tells the truth: where its XML declaration names an
/// encoding other than UTF-8, the name is replaced by UTF-8. Every other byte stays as it is, a
/// byte order mark and blanks before the declaration included, and so does a text without a
/// declaration, with one that names no encoding, or that is no XML at all.
/// @param text in UTF-8, whatever it declares
/// @return the text, in UTF-8
HOST_EXPORT QByteArray declaredAsUtf8(const QByteArray& text);

/// The characters of a text that came from outside, to be shown to people: in the encoding that its
/// byte order mark or its declaration names, UTF-8 where neither does or nobody knows the name.
/// What cannot be read is replaced by U+FFFD.
/// @param text the bytes as they came
/// @return the characters
HOST_EXPORT QString decoded(const QByteArray& text);

/// A text with the characters in place of what refers to them: numbers (&#1040;) and the names that
/// every XML or HTML text knows. What is no reference, or one to no character, stays or becomes
/// U+FFFD.
/// @param text as it stands between tags
/// @return what it says
HOST_EXPORT QString withoutReferences(const QString& text);

/// A text that was cut, without the word at its end, which may be half a word: half a name or half
/// a number is known by nobody who takes names and numbers out. References count to the word, the
/// groups of a number that blanks divide count as one. A word of more than 256 characters stays.
/// @param text the beginning of a longer one
/// @return it, or less of it
HOST_EXPORT QString withoutHalfWord(const QString& text);

} // namespace poshost::xmltext
