// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/xmltext.h"

#include <QByteArrayView>
#include <QHash>
#include <QRegularExpression>
#include <QStringDecoder>

#include <algorithm>

namespace poshost::xmltext {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView blanks(" \t\r\n");

/// Where the name of the encoding stands in a text; an empty stretch for none.
struct Stretch
{
    qsizetype start = 0;
    qsizetype length = 0;
};

/// Reads the declaration's attributes one after another, so that what looks like one inside the
/// value of another is not taken for it.
class Declaration
{
public:
    explicit Declaration(const QByteArray& whole) : text(whole)
    {
        constexpr QByteArrayView mark("\xef\xbb\xbf");
        constexpr QByteArrayView opening("<?xml");
        at = text.startsWith(mark) ? mark.size() : 0;
        passBlanks();
        const bool opens = QByteArrayView(text).sliced(at).startsWith(opening);
        at += opening.size();
        end = opens ? text.indexOf("?>", at) : -1;
        if (end <= at || !blanks.contains(text.at(at))) {
            at = end = 0; // another instruction, such as <?xml-stylesheet
        }
    }

    Stretch encoding()
    {
        while (at < end) {
            const QByteArrayView name = takeName();
            const Stretch value = takeValue();
            if (name == "encoding") {
                return value;
            }
        }
        return {};
    }

private:
    void passBlanks()
    {
        while (at < text.size() && blanks.contains(text.at(at))) {
            ++at;
        }
    }

    QByteArrayView takeName()
    {
        passBlanks();
        const qsizetype start = at;
        while (at < end && text.at(at) != '=' && !blanks.contains(text.at(at))) {
            ++at;
        }
        const QByteArrayView name = QByteArrayView(text).sliced(start, at - start);
        passBlanks();
        return name;
    }

    /// An empty stretch, and the end of the declaration, where there is no quoted value.
    Stretch takeValue()
    {
        if (at < end && text.at(at) == '=') {
            ++at;
            passBlanks();
            const char quote = at < end ? text.at(at) : '\0';
            const qsizetype start = at + 1;
            const qsizetype close =
                quote == '"' || quote == '\'' ? text.indexOf(quote, start) : qsizetype(-1);
            if (close >= 0 && close < end) {
                at = close + 1;
                return {start, close - start};
            }
        }
        at = end;
        return {};
    }

    const QByteArray& text;
    qsizetype at = 0;
    qsizetype end = 0;
};

QString characterOf(const QString& name)
{
    static const QHash<QString, QString> known{{u"lt"_s, u"<"_s},   {u"gt"_s, u">"_s},
                                               {u"amp"_s, u"&"_s},  {u"quot"_s, u"\""_s},
                                               {u"apos"_s, u"'"_s}, {u"nbsp"_s, u"\u00a0"_s}};
    if (!name.startsWith(u'#')) {
        return known.value(name, u'&' + name + u';');
    }
    const bool isHex = name.startsWith("#x"_L1, Qt::CaseInsensitive);
    bool isNumber = false;
    const char32_t code = name.sliced(isHex ? 2 : 1).toUInt(&isNumber, isHex ? 16 : 10);
    return isNumber && code <= QChar::LastValidCodePoint && !QChar::isSurrogate(code)
               ? QString::fromUcs4(&code, 1)
               : QString(QChar::ReplacementCharacter);
}

} // namespace

QByteArray declaredAsUtf8(const QByteArray& text)
{
    constexpr QByteArrayView truth("UTF-8");
    const Stretch name = Declaration(text).encoding();
    const QByteArrayView named = QByteArrayView(text).sliced(name.start, name.length);
    if (name.length == 0 || named.compare(truth, Qt::CaseInsensitive) == 0) {
        return text;
    }
    QByteArray result = text;
    return result.replace(name.start, name.length, truth);
}

QString decoded(const QByteArray& text)
{
    if (const auto marked = QStringConverter::encodingForData(text, u'<')) {
        return QStringDecoder(*marked)(text);
    }
    const Stretch name = Declaration(text).encoding();
    const QByteArray named = text.mid(name.start, name.length).toUpper();
    // a declaration that was read byte by byte cannot be in one of these
    const bool isWide =
        named.startsWith("UTF-16") || named.startsWith("UTF-32") || named.contains("UCS");
    QStringDecoder decoder(named.constData());
    return name.length > 0 && !isWide && decoder.isValid() ? QString(decoder(text))
                                                           : QString::fromUtf8(text);
}

QString withoutReferences(const QString& text)
{
    static const QRegularExpression reference(u"&(#?\\w{1,10});"_s);
    QString result;
    qsizetype from = 0;
    for (auto it = reference.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        result.append(QStringView(text).sliced(from, match.capturedStart() - from));
        result.append(characterOf(match.captured(1)));
        from = match.capturedEnd();
    }
    return result.append(QStringView(text).sliced(from));
}

QString withoutHalfWord(const QString& text)
{
    constexpr qsizetype longest = 256;
    static const QRegularExpression word(u"(?:\\p{N}+[\\s\\p{Z}.\\-_/]{1,2})*"
                                         "[\\p{L}\\p{N}\\p{M}&#;\\x{FFFD}]*\\z"_s,
                                         QRegularExpression::UseUnicodePropertiesOption);
    const QString end = text.last(std::min(text.size(), longest + 1));
    const qsizetype length = word.match(end).capturedLength();
    return length > longest ? text : text.chopped(length);
}

} // namespace poshost::xmltext
