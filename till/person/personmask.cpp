// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/person/personmask.h"

#include "host/queue/xmltext.h"
#include "till/checks/cardnumber.h"
#include "till/person/cardspelling.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

constexpr auto unicode = QRegularExpression::UseUnicodePropertiesOption;

const QRegularExpression& wordPattern()
{
    static const QRegularExpression word(
        u"(?<![\\p{L}\\p{N}\\p{M}])\\p{L}[\\p{L}\\p{M}]+(?![\\p{L}\\p{N}\\p{M}])"_s, unicode);
    return word;
}

/// The same for every way in which people write a word.
QString folded(const QString& word)
{
    return word.normalized(QString::NormalizationForm_KC).toCaseFolded().replace(u'ё', u'е');
}

QStringList wordsOf(const QString& name)
{
    QStringList words;
    for (auto it = wordPattern().globalMatch(name); it.hasNext();) {
        words.append(it.next().captured());
    }
    return words;
}

QString alternatives(const QStringList& patterns)
{
    return patterns.isEmpty() ? QString() : u"(?:"_s + patterns.join(u'|') + u')';
}

QRegularExpression cardPattern(const QSet<QString>& cards)
{
    QStringList patterns;
    for (const QString& card : cards) {
        if (card.size() >= cardspelling::shortest) {
            patterns.append(cardspelling::pattern(card));
        }
    }
    return QRegularExpression(alternatives(patterns),
                              unicode | QRegularExpression::CaseInsensitiveOption);
}

/// The words of each name beside each other, in the two orders that people write them in.
QRegularExpression namePattern(const QSet<QString>& names)
{
    const QString between = u"[\\s,.;_/\\-]{1,3}"_s;
    QStringList patterns;
    for (const QString& name : names) {
        QStringList words = wordsOf(name);
        if (words.size() < 2) {
            continue; // a first name alone is everybody's
        }
        for (QString& word : words) {
            word = QRegularExpression::escape(word);
        }
        patterns.append(words.join(between));
        std::reverse(words.begin(), words.end());
        patterns.append(words.join(between));
    }
    const QString all = alternatives(patterns);
    return QRegularExpression(
        all.isEmpty() ? all : u"(?<![\\p{L}\\p{N}])"_s + all + u"(?![\\p{L}\\p{N}])"_s,
        unicode | QRegularExpression::CaseInsensitiveOption);
}

QString escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

/// A text in the encoding in which xmltext::decoded has read those bytes.
QByteArray encodedAs(const QByteArray& bytes, const QString& text)
{
    if (const auto marked = QStringConverter::encodingForData(bytes, u'<')) {
        return QStringEncoder(*marked, QStringConverter::Flag::WriteBom)(text);
    }
    static const QRegularExpression declared(
        u"^\\s*<\\?xml[^>]*\\sencoding\\s*=\\s*[\"']([^\"']+)"_s);
    const QString head = QString::fromLatin1(bytes.first(std::min<qsizetype>(bytes.size(), 200)));
    QStringEncoder named(declared.match(head).captured(1).toLatin1().constData());
    return named.isValid() ? QByteArray(named(text)) : text.toUtf8();
}

} // namespace

PersonMask::PersonMask(const People& people)
    : hidden(people), cards(cardPattern(people.cards)), wholeNames(namePattern(people.names))
{
    for (const QString& name : people.names) {
        for (const QString& word : wordsOf(name)) {
            words.insert(folded(word));
        }
    }
}

QString PersonMask::replaced(const QString& text, const QRegularExpression& what,
                             const Replace& replacement) const
{
    if (what.pattern().isEmpty()) {
        return text;
    }
    QString result;
    qsizetype from = 0;
    for (auto it = what.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        result.append(QStringView(text).sliced(from, match.capturedStart() - from));
        result.append(replacement(match.captured()));
        from = match.capturedEnd();
    }
    return from == 0 ? text : result.append(QStringView(text).sliced(from));
}

bool PersonMask::hasCard(const QString& text) const
{
    if (cards.pattern().isEmpty()) {
        return hidden.cards.contains(cardspelling::plain(text));
    }
    return cards.match(text).hasMatch() ||
           (text.contains(u'&') &&
            cards.match(poshost::xmltext::withoutReferences(text)).hasMatch());
}

QString PersonMask::maskedNumber(const QString& number) const
{
    const QString plain = cardspelling::plain(number);
    return hidden.cards.contains(plain) ? cardnumber::shortened(plain) : masked(number);
}

QString PersonMask::plainMasked(const QString& text) const
{
    const QString withoutCards = replaced(text, cards, [](const QString& found) {
        return cardnumber::shortened(cardspelling::plain(found));
    });
    return words.isEmpty() ? withoutCards
                           : replaced(withoutCards, wordPattern(), [this](const QString& word) {
                                 return words.contains(folded(word)) ? u"***"_s : word;
                             });
}

QString PersonMask::referencesMasked(const QString& text) const
{
    if (!text.contains(u'&')) {
        return plainMasked(text);
    }
    const QString said = poshost::xmltext::withoutReferences(text);
    const QString result = plainMasked(said);
    return result == said ? text : escaped(result);
}

QString PersonMask::tagMasked(const QString& tag) const
{
    if (tag.startsWith("<!"_L1)) { // a comment, or characters that are none of the markup
        return tag.first(2) + plainMasked(tag.sliced(2));
    }
    static const QRegularExpression value(u"\"[^\"]*\"|'[^']*'"_s);
    return replaced(tag, value, [this](const QString& quoted) {
        return quoted.first(1) + referencesMasked(quoted.chopped(1).sliced(1)) + quoted.last(1);
    });
}

QString PersonMask::markupMasked(const QString& text) const
{
    static const QRegularExpression tag(
        u"<!\\[CDATA\\[.*?(?:\\]\\]>|$)|<!--.*?(?:-->|$)|<[^>]*(?:>|$)"_s,
        QRegularExpression::DotMatchesEverythingOption);
    QString result;
    qsizetype from = 0;
    for (auto it = tag.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        result += referencesMasked(text.sliced(from, match.capturedStart() - from));
        result += tagMasked(match.captured());
        from = match.capturedEnd();
    }
    return result + referencesMasked(text.sliced(from));
}

QString PersonMask::masked(const QString& text) const
{
    const qsizetype first =
        std::find_if_not(text.begin(), text.end(),
                         [](QChar character) {
                             return character.isSpace() || character == QChar::ByteOrderMark;
                         }) -
        text.begin();
    if (first < text.size() && text.at(first) == u'<') {
        return markupMasked(text);
    }
    const QString plain = cardspelling::plain(text);
    const bool isShortNumber =
        plain.size() < cardspelling::shortest && hidden.cards.contains(plain);
    return isShortNumber ? cardnumber::shortened(plain) : plainMasked(text);
}

QByteArray PersonMask::masked(const QByteArray& bytes) const
{
    const QString text = poshost::xmltext::decoded(bytes);
    const QString result = masked(text);
    return result == text ? bytes : encodedAs(bytes, result);
}

QJsonValue PersonMask::masked(const QJsonValue& value) const
{
    if (value.isString()) {
        return masked(value.toString());
    }
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        for (auto it = array.begin(); it != array.end(); ++it) {
            *it = masked(QJsonValue(*it));
        }
        return array;
    }
    if (!value.isObject()) {
        return value;
    }
    QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        it.value() = masked(QJsonValue(it.value()));
    }
    return object;
}

QVariant PersonMask::masked(const QVariant& value) const
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return masked(value.toString());
    case QMetaType::QByteArray:
        return masked(value.toByteArray());
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        const bool isTexts = value.typeId() == QMetaType::QStringList;
        QVariantList list = value.toList();
        for (QVariant& entry : list) {
            entry = masked(entry);
        }
        return isTexts ? QVariant(QVariant(list).toStringList()) : QVariant(list);
    }
    case QMetaType::QVariantMap: {
        QVariantMap map = value.toMap();
        for (QVariant& entry : map) {
            entry = masked(entry);
        }
        return map;
    }
    default:
        return value;
    }
}

QByteArray PersonMask::maskedInPlace(const QByteArray& text) const
{
    const QString read = QString::fromUtf8(text);
    const bool isUtf8 = read.toUtf8() == text; // otherwise bytes, whose digits are the same
    const auto bytesOf = [isUtf8](const QString& part) {
        return isUtf8 ? part.toUtf8() : part.toLatin1();
    };
    const auto stars = [&](const QString& found) { return QString(bytesOf(found).size(), u'*'); };
    const QString withoutCards = replaced(isUtf8 ? read : QString::fromLatin1(text), cards, stars);
    return bytesOf(replaced(withoutCards, wholeNames, stars));
}

} // namespace till
