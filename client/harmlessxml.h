// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

namespace orva {

/// Why an XML text may not be given to the parser: a clause in Russian that names limit, line and
/// element; empty when it may.
///
/// Some well-formed texts cost Qt's DOM far more than their size: deep nesting overflows the stack
/// when the document is written, long attribute lists and entity declarations take seconds to read,
/// texts full of escapes take seconds to write. No cashier waits for those, so a text is refused
/// that is beyond one of the limits in xmllimits.h or has a document type with declarations of its
/// own. No text is refused for its encoding: in whichever Qt's parser reads it, the decoded text is
/// judged.
///
/// Whether the text is well-formed is the parser's business: up to the first error both see the
/// same markup, and behind it the parser reads no further. Runs over the text once. A text that is
/// not refused is not refused either as the parser's document is written, indented by one blank.
QString harmInXml(const QByteArray& text);
/// The same for a text that has been decoded.
QString harmInXml(const QString& text);

} // namespace orva
