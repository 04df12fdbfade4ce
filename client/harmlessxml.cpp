// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/harmlessxml.h"

#include <QLatin1StringView>
#include <QRegularExpression>
#include <QStringDecoder>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

constexpr int maxLevels = 512;
constexpr int maxAttributes = 64;
constexpr int maxEscapes = 10'000;
/// Elements, attributes and other markup: about half a gigabyte of DOM.
constexpr qint64 maxNodes = 1'000'000;
/// Blanks that an indented copy begins its lines with.
constexpr qint64 maxIndentation = 64'000'000;
/// Sum of escapes times length over all texts: every escape moves the rest of its text.
constexpr qint64 maxEscapeMoves = 10'000'000'000;

/// Follows the markup of a text as far as the limits need it.
template <typename Char>
class MarkupScanner
{
public:
    MarkupScanner(const Char* begin, const Char* textEnd) : at(begin), end(textEnd) {}

    bool isHarmless()
    {
        while (at != end) {
            if (!(*at == Char('<') ? passMarkup() : passText())) {
                return false;
            }
        }
        return true;
    }

private:
    bool passText()
    {
        const Char* const start = at;
        qint64 escapes = 0;
        for (; at != end && *at != Char('<'); ++at) {
            if (*at == Char('&') || isEndOfCdata(start)) {
                ++escapes;
            }
        }
        return countEscapes(escapes, at - start);
    }

    /// Behind "]]" even a ">" is written as an escape.
    bool isEndOfCdata(const Char* start) const
    {
        return *at == Char('>') && at - start >= 2 && at[-1] == Char(']') && at[-2] == Char(']');
    }

    bool passMarkup()
    {
        if (++nodes > maxNodes) {
            return false;
        }
        // what an answer mostly consists of comes first
        if (startsWith("</")) {
            --level;
            at = std::find(at, end, Char('>'));
            at += at == end ? 0 : 1;
            return true;
        }
        if (end - at < 2 || (at[1] != Char('!') && at[1] != Char('?'))) {
            return passElement();
        }
        if (startsWith("<!--")) {
            return passUntil("-->", 4);
        }
        if (startsWith("<![CDATA[")) {
            return passUntil("]]>", 9);
        }
        if (startsWith("<?")) {
            return passUntil("?>", 2);
        }
        // Any other declaration is an error at which the parser stops, or the text ends here.
        const bool isTypeDeclaration = startsWith("<!DOCTYPE");
        at = end;
        return !isTypeDeclaration;
    }

    bool passElement()
    {
        indentation += ++level;
        if (level > maxLevels || indentation > maxIndentation) {
            return false;
        }
        int attributes = 0;
        for (++at; at != end; ++at) {
            if (*at == Char('>')) {
                level -= *std::prev(at) == Char('/') ? 1 : 0;
                ++at;
                return true;
            }
            if (*at == Char('=') && (++attributes > maxAttributes || ++nodes > maxNodes)) {
                return false;
            }
            if ((*at == Char('"') || *at == Char('\'')) && !passValue()) {
                return false;
            }
            if (at == end) {
                break;
            }
        }
        return true;
    }

    /// Ends on the closing quote, or at the end where there is none.
    bool passValue()
    {
        const Char quote = *at;
        const Char* const start = ++at;
        qint64 escapes = 0;
        for (; at != end && *at != quote; ++at) {
            // a double quote between single ones is written as an escape
            if (*at == Char('&') || *at == Char('"') || isEndOfCdata(start)) {
                ++escapes;
            }
        }
        return countEscapes(escapes, at - start);
    }

    bool countEscapes(qint64 escapes, qint64 length)
    {
        escapeMoves += escapes * length;
        return escapes <= maxEscapes && escapeMoves <= maxEscapeMoves;
    }

    bool startsWith(const char* prefix) const
    {
        const Char* here = at;
        for (; *prefix != '\0'; ++prefix, ++here) {
            if (here == end || *here != Char(*prefix)) {
                return false;
            }
        }
        return true;
    }

    bool passUntil(const char* terminator, int skipped)
    {
        const char* const terminatorEnd = terminator + qstrlen(terminator);
        at += skipped;
        at = std::search(at, end, terminator, terminatorEnd,
                         [](Char left, char right) { return left == Char(right); });
        if (at != end) {
            at += terminatorEnd - terminator;
        }
        return true;
    }

    const Char* at;
    const Char* end;
    int level = 0;
    qint64 nodes = 0;
    qint64 indentation = 0;
    qint64 escapeMoves = 0;
};

/// The encodings that the XML declaration names; more than one only where the parser will refuse
/// it.
/// @param head the text up to the first "?>", however far that is
QStringList declaredEncodings(const QString& head)
{
    if (!head.startsWith("<?xml"_L1)) {
        return {};
    }
    static const QRegularExpression pattern(u"encoding\\s*=\\s*[\"']([^\"']*)[\"']"_s);
    QStringList names;
    auto matches = pattern.globalMatch(head);
    while (matches.hasNext()) {
        names.append(matches.next().captured(1).toLower());
    }
    return names;
}

/// In these a byte below 128 is always the ASCII character.
bool isAsciiSuperset(const QString& name)
{
    static constexpr QLatin1StringView exact[] = {"utf-8"_L1,  "utf8"_L1,   "us-ascii"_L1,
                                                  "ascii"_L1,  "koi8-r"_L1, "koi8-u"_L1,
                                                  "ibm866"_L1, "cp866"_L1,  "latin1"_L1};
    static constexpr QLatin1StringView prefixes[] = {"iso-8859-"_L1, "windows-125"_L1, "cp125"_L1};
    return std::find(std::begin(exact), std::end(exact), name) != std::end(exact) ||
           std::any_of(std::begin(prefixes), std::end(prefixes),
                       [&name](QLatin1StringView prefix) { return name.startsWith(prefix); });
}

bool isHarmlessWideXml(const QByteArray& text, QStringConverter::Encoding encoding)
{
    QStringDecoder decoder(encoding);
    const QString decoded = decoder(text);
    // Without a mark the parser starts anew with the byte order that it thinks the name means.
    const bool marked = QStringConverter::encodingForData(text).has_value();
    const QStringList names = declaredEncodings(decoded.left(decoded.indexOf("?>"_L1)));
    return std::all_of(names.cbegin(), names.cend(),
                       [&](const QString& name) { return marked && name == "utf-16"_L1; }) &&
           orva::isHarmlessXml(decoded);
}

} // namespace

namespace orva {

bool isHarmlessXml(const QByteArray& text)
{
    const auto encoding = QStringConverter::encodingForData(text, u'<');
    if (encoding && *encoding != QStringConverter::Utf8) {
        return isHarmlessWideXml(text, *encoding);
    }
    static constexpr QByteArrayView mark("\xef\xbb\xbf");
    const QByteArrayView unmarked =
        text.startsWith(mark) ? QByteArrayView(text).sliced(mark.size()) : QByteArrayView(text);
    const qsizetype end = unmarked.startsWith("<?xml") ? unmarked.indexOf("?>") : 0;
    const QByteArrayView head = end < 0 ? unmarked : unmarked.first(end);
    const QStringList names = declaredEncodings(QString::fromLatin1(head));
    return std::all_of(names.cbegin(), names.cend(), isAsciiSuperset) &&
           MarkupScanner<char>(unmarked.cbegin(), unmarked.cend()).isHarmless();
}

bool isHarmlessXml(const QString& text)
{
    const auto* const begin = reinterpret_cast<const char16_t*>(text.utf16());
    return MarkupScanner<char16_t>(begin, begin + text.size()).isHarmless();
}

} // namespace orva
