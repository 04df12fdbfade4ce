// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/harmlessxml.h"

#include "client/elements.h"
#include "client/xmlencoding.h"
#include "client/xmllimits.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

namespace limit = orva::xmllimit;

/// A name from outside as it may stand in a sentence: no longer than a name is, nothing
/// unprintable.
QString shownName(const QString& name)
{
    constexpr qsizetype enough = 40;
    QString shown = name.left(enough);
    for (QChar& character : shown) {
        character = character.isPrint() ? character : u'?';
    }
    return shown;
}

/// Follows the markup of a text as far as the limits need it.
template <typename Char>
class MarkupScanner
{
public:
    MarkupScanner(const Char* begin, const Char* textEnd) : first(begin), at(begin), end(textEnd) {}

    /// What is beyond a limit, and where; empty when nothing is.
    QString harm()
    {
        while (at != end) {
            if (!(*at == Char('<') ? passMarkup() : passText())) {
                return what + place();
            }
        }
        return {};
    }

private:
    bool refuse(const QString& complaint, qint64 most)
    {
        what = complaint.arg(most);
        return false;
    }

    QString place() const
    {
        QString text = u", строка %1"_s.arg(1 + std::count(first, at, Char('\n')));
        if (element != nullptr) {
            const Char* nameEnd = std::find_if(element, end, [](Char c) { return !isNamePart(c); });
            text += u", элемент %1"_s.arg(shownName(toText(element, nameEnd)));
        }
        return text;
    }

    static QString toText(const char* from, const char* to)
    {
        return QString::fromUtf8(from, to - from);
    }
    static QString toText(const char16_t* from, const char16_t* to)
    {
        return QString::fromUtf16(from, to - from);
    }

    static bool isBlank(Char c)
    {
        return c == Char(' ') || c == Char('\n') || c == Char('\t') || c == Char('\r');
    }
    static bool isNamePart(Char c)
    {
        return !isBlank(c) && c != Char('>') && c != Char('/') && c != Char('=') && c != Char('<');
    }

    bool passText()
    {
        const Char* const start = at;
        bool blank = true;
        qint64 escapes = 0;
        qint64 length = 0;
        while (at != end && *at != Char('<')) {
            blank = blank && isBlank(*at);
            passCharacter(*at == Char('&') || isEndOfCdata(start), escapes, length);
        }
        // blank ones are dropped
        return blank || (addNodes(1) && addText(escapes, length));
    }

    /// A reference is passed whole, so that it counts as what is written for it.
    void passCharacter(bool isEscape, qint64& escapes, qint64& length)
    {
        constexpr std::ptrdiff_t longestReference = 12;
        if (*at == Char('&')) {
            const Char* const stop = at + std::min(end - at, longestReference);
            const Char* const semicolon = std::find(at, stop, Char(';'));
            at = semicolon == stop ? at : semicolon;
        }
        ++at;
        escapes += isEscape ? 1 : 0;
        length += isEscape ? limit::longestEscape : 1;
    }

    /// Behind "]]" even a ">" is written as an escape.
    bool isEndOfCdata(const Char* start) const
    {
        return *at == Char('>') && at - start >= 2 && at[-1] == Char(']') && at[-2] == Char(']');
    }

    bool passMarkup()
    {
        const Char* const start = at;
        // what an answer mostly consists of comes first
        if (startsWith("</")) {
            --level;
            at = std::find(at, end, Char('>'));
            at += at == end ? 0 : 1;
            return addCharacters(at - start);
        }
        if (end - at < 2 || (at[1] != Char('!') && at[1] != Char('?'))) {
            return passElement();
        }
        if (startsWith("<!--")) {
            passUntil("-->", 4);
        } else if (startsWith("<![CDATA[")) {
            passUntil("]]>", 9);
        } else if (startsWith("<?")) {
            passUntil("?>", 2);
        } else if (startsWith("<!DOCTYPE")) {
            if (!passDocumentType()) {
                what = u"DOCTYPE с собственными объявлениями"_s;
                return false;
            }
        } else {
            at = end; // any other declaration is an error at which the parser stops
        }
        return addNodes(1) && addCharacters(at - start + level + 1);
    }

    /// Declarations stand between brackets; nothing outside the text is ever read.
    bool passDocumentType()
    {
        Char quote = 0;
        for (; at != end; ++at) {
            if (quote != 0) {
                quote = *at == quote ? Char(0) : quote;
            } else if (*at == Char('"') || *at == Char('\'')) {
                quote = *at;
            } else if (*at == Char('[')) {
                return false;
            } else if (*at == Char('>')) {
                ++at;
                return true;
            }
        }
        return true;
    }

    bool passElement()
    {
        const Char* const start = at;
        element = at + 1;
        if (++level > limit::levels) {
            return refuse(u"больше %1 уровней элементов"_s, limit::levels);
        }
        if (++elements > limit::elements) {
            return refuse(u"больше %1 элементов"_s, limit::elements);
        }
        if ((isNamed(lineName) || isNamed(messageName)) && ++entries > limit::entries) {
            return refuse(u"больше %1 строк товара и сообщений"_s, limit::entries);
        }
        // its tags are written on lines of their own
        const int indented = 2 * (level + 1);
        return addNodes(1) && passTag() && addCharacters(at - start + indented);
    }

    bool passTag()
    {
        int attributes = 0;
        for (++at; at != end; ++at) {
            if (*at == Char('>')) {
                level -= *std::prev(at) == Char('/') ? 1 : 0;
                ++at;
                return true;
            }
            if (*at == Char('=') && !addAttribute(++attributes)) {
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

    bool addAttribute(int count)
    {
        if (count > limit::attributes) {
            return refuse(u"больше %1 атрибутов у элемента"_s, limit::attributes);
        }
        return addNodes(limit::attributeNodes + (count == 1 ? limit::attributeTableNodes : 0));
    }

    /// Ends on the closing quote, or at the end where there is none.
    bool passValue()
    {
        const Char quote = *at;
        const Char* const start = ++at;
        qint64 escapes = 0;
        qint64 length = 0;
        while (at != end && *at != quote) {
            // a double quote between single ones is written as an escape
            passCharacter(*at == Char('&') || *at == Char('"') || isEndOfCdata(start), escapes,
                          length);
        }
        // the tag counts the value's characters as they stand
        return addText(escapes, length) && addCharacters(start - at);
    }

    bool addNodes(int count)
    {
        nodes += count;
        return nodes <= limit::nodes ||
               refuse(u"больше %1 узлов (элементов, текстов, атрибутов)"_s, limit::nodes);
    }

    bool addCharacters(qint64 count)
    {
        characters += count;
        return characters <= limit::characters ||
               refuse(u"записанный с отступами, длиннее %1 знаков"_s, limit::characters);
    }

    bool addText(qint64 escapes, qint64 length)
    {
        escapeMoves += escapes * length;
        if (escapeMoves > limit::escapeMoves) {
            return refuse(u"слишком много замен вроде &lt; в длинных текстах (число замен, "
                          "умноженное на длину текста, в сумме больше %1)"_s,
                          limit::escapeMoves);
        }
        return addCharacters(length);
    }

    bool isNamed(const QString& name) const
    {
        const Char* const nameEnd = element + std::min<std::ptrdiff_t>(end - element, name.size());
        return nameEnd - element == name.size() && (nameEnd == end || !isNamePart(*nameEnd)) &&
               std::equal(element, nameEnd, name.cbegin(),
                          [](Char left, QChar right) { return QChar(char16_t(left)) == right; });
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

    void passUntil(const char* terminator, int skipped)
    {
        const char* const terminatorEnd = terminator + qstrlen(terminator);
        at += skipped;
        at = std::search(at, end, terminator, terminatorEnd,
                         [](Char left, char right) { return left == Char(right); });
        if (at != end) {
            at += terminatorEnd - terminator;
        }
    }

    const QString lineName = orva::element::rawItem();
    const QString messageName = orva::element::rawCheckInforming();
    const Char* const first;
    const Char* at;
    const Char* const end;
    const Char* element = nullptr; ///< the name of the element begun last
    int level = 0;
    int elements = 0;
    int entries = 0;
    qint64 nodes = 0;
    qint64 characters = 0;
    qint64 escapeMoves = 0;
    QString what;
};

} // namespace

namespace orva {

QString harmInXml(const QByteArray& text)
{
    const XmlEncoding encoding(text);
    if (encoding.isOverloaded()) {
        return u"больше %1 атрибутов в объявлении XML, строка 1"_s.arg(
            limit::declarationAttributes);
    }
    if (!encoding.keepsAscii()) {
        return harmInXml(encoding.decoded());
    }
    static constexpr QByteArrayView mark("\xef\xbb\xbf");
    const QByteArrayView unmarked =
        text.startsWith(mark) ? QByteArrayView(text).sliced(mark.size()) : QByteArrayView(text);
    return MarkupScanner<char>(unmarked.cbegin(), unmarked.cend()).harm();
}

QString harmInXml(const QString& text)
{
    const auto* const begin = reinterpret_cast<const char16_t*>(text.utf16());
    return MarkupScanner<char16_t>(begin, begin + text.size()).harm();
}

} // namespace orva
