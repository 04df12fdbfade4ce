// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

/// What an XML text may have at most before it is given to the parser. docs/protocol.md tells those
/// who write servers, and a test compares. Together the limits keep everything that is made of an
/// answer (read twice, written and stored several times, recorded, sent on) below two seconds of
/// processor time and 256 MB (bench/README.md has the figures); an ordinary answer for ten thousand
/// goods lines stays below each.
namespace orva::xmllimit {

/// Elements within one another: the DOM is written and deleted by recursion.
inline constexpr int levels = 512;
/// Attributes of one element: each is compared with all others.
inline constexpr int attributes = 64;
/// Attributes of the XML declaration, as many as there are: the parser keeps any number of others
/// and decodes the whole text for each encoding among them.
inline constexpr int declarationAttributes = 3;
/// Nodes of the DOM, about 270 bytes each. An element, a text that is not blank, a comment, a
/// section of CDATA and an instruction count one, an attribute two; the first attribute of an
/// element seven more, since it brings the table of attributes.
inline constexpr qint64 nodes = 275'000;
inline constexpr int attributeNodes = 2;
inline constexpr int attributeTableNodes = 7;
/// Elements among them: one takes about twice the time of another node to be read and written.
inline constexpr int elements = 200'000;
/// Goods lines and messages in sum: the host makes objects of their own of each.
inline constexpr int entries = 10'500;
/// The squares of how many goods lines name the same position, in sum over the positions: all that
/// a position used is reported in each of its lines.
inline constexpr qint64 sameLines = 20'000;
/// Characters of the document as it is written again: indented by one blank a level, on a line of
/// its own for each tag, every escape taken for its longest.
inline constexpr qint64 characters = 5'700'000;
inline constexpr int longestEscape = 6;
/// Sum of escapes times length over all texts and values: every escape moves the rest of its text.
inline constexpr qint64 escapeMoves = 250'000'000;

} // namespace orva::xmllimit
