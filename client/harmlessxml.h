// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

namespace orva {

/// Whether an XML text may be given to the parser.
///
/// Some well-formed texts cost Qt's DOM far more than their size: deep nesting overflows the stack
/// when the document is written, long attribute lists and entity declarations take seconds to read,
/// texts full of escapes take seconds to write. No cashier waits for those, so a text is refused
/// that has
/// - more than 512 levels of elements,
/// - a document type declaration,
/// - more than 64 attributes on an element,
/// - more than 10,000 escapes in one text or attribute value,
/// - more nodes, deeper indentation or longer escaped texts in sum than writing it again can bear
///   (the limits stand in harmlessxml.cpp, far above any answer to a check),
/// - an encoding other than UTF-8, UTF-16 with a byte order mark and the single-byte ones, since
///   the markup of others cannot be told from their bytes.
///
/// Whether the text is well-formed is the parser's business: up to the first error both see the
/// same markup, and behind it the parser reads no further. Runs over the text once.
bool isHarmlessXml(const QByteArray& text);
/// The same for a text that has been decoded.
bool isHarmlessXml(const QString& text);

} // namespace orva
