// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/xmlguard.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// A tag from "<" to ">": how many attributes it has and whether it is closed by "/>".
struct Tag
{
    qsizetype end = 0; ///< behind the ">"
    int attributes = 0;
    bool empty = false;
};

Tag scanTag(QStringView text, qsizetype start)
{
    Tag tag;
    QChar quote;
    for (qsizetype i = start; i < text.size(); ++i) {
        const QChar character = text[i];
        if (!quote.isNull()) {
            quote = character == quote ? QChar() : quote;
        } else if (character == u'"' || character == u'\'') {
            quote = character;
        } else if (character == u'=') {
            ++tag.attributes;
        } else if (character == u'>') {
            tag.empty = text[i - 1] == u'/';
            tag.end = i + 1;
            return tag;
        }
    }
    tag.end = text.size();
    return tag;
}

/// The position behind the next occurrence of mark, or the end of the text.
qsizetype behind(QStringView text, QStringView mark, qsizetype from)
{
    const qsizetype found = text.indexOf(mark, from);
    return found < 0 ? text.size() : found + mark.size();
}

} // namespace

std::optional<QString> xmlObjection(QStringView text)
{
    int depth = 0;
    int elements = 0;
    qsizetype at = text.indexOf(u'<');
    while (at >= 0) {
        const QStringView rest = text.sliced(at);
        if (rest.startsWith(u"<!--")) {
            at = behind(text, u"-->", at + 4);
        } else if (rest.startsWith(u"<![CDATA[")) {
            at = behind(text, u"]]>", at + 9);
        } else if (rest.startsWith(u"<?")) {
            at = behind(text, u"?>", at + 2);
        } else if (rest.startsWith(u"<!")) {
            return u"The XML has a document type declaration, which is not accepted"_s;
        } else if (rest.startsWith(u"</")) {
            --depth;
            at = behind(text, u">", at);
        } else {
            const Tag tag = scanTag(text, at + 1);
            at = tag.end;
            depth += tag.empty ? 0 : 1;
            if (depth > maximumDepth) {
                return u"The XML is nested deeper than %1 levels"_s.arg(maximumDepth);
            }
            if (tag.attributes > maximumAttributes) {
                return u"The XML has more than %1 attributes on one element"_s.arg(
                    maximumAttributes);
            }
            if (++elements > maximumElements) {
                return u"The XML has more than %1 elements"_s.arg(maximumElements);
            }
        }
        at = text.indexOf(u'<', at);
    }
    return std::nullopt;
}

} // namespace simulator
