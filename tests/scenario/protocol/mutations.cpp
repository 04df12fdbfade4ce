// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/protocol/mutations.h"

#include <QDomDocument>
#include <QHash>
#include <QStringList>

#include <functional>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

using Kind = Mutation::Kind;

/// Texts that an element of that name must not have anywhere; none where every text is good.
QStringList wrongTexts(const QString& name, const QString& parent)
{
    const QStringList amounts{u""_s,
                              u"x"_s,
                              u"12,50"_s,
                              u"1 000.00"_s,
                              u"+1.00"_s,
                              u".50"_s,
                              u"1."_s,
                              u"1.005"_s,
                              u"1e2"_s,
                              u"01.00"_s,
                              u"NaN"_s,
                              u"INF"_s,
                              u"٣.٠٠"_s,
                              u"0x10"_s,
                              u"--1.00"_s,
                              u"1.0.0"_s,
                              u"99999999999999.00"_s};
    const QStringList written = amounts + QStringList{u"12.5"_s, u"12"_s, u"-1.00"_s};
    const QStringList ids{u""_s, u" "_s, QString(257, u'x')};
    const QStringList quantities{u""_s, u"1"_s, u"1.00"_s, u"0.000"_s, u"-1.000"_s, u"1,000"_s};
    static const QHash<QString, QStringList> all{
        {u"RawCheck/id"_s, ids},
        {u"originalId"_s, ids},
        {u"cardNumber"_s, ids},
        {u"sku"_s, ids},
        {u"number"_s, {u""_s, u"x"_s, u"-1"_s, u"007"_s, u"+7"_s, u"1.0"_s, u"2147483648"_s}},
        {u"date"_s,
         {u""_s, u"2024-03-05"_s, u"05.03.2024 14:20:31"_s, u"2024-03-05T14:20:31"_s,
          u"2024-13-05 14:20:31"_s, u"2024-03-32 14:20:31"_s, u"2024-03-05 24:00:00"_s,
          u"2024-03-05 14:60:31"_s, u"2024-03-05  14:20:31"_s, u" 2024-03-05 14:20:31"_s}},
        {u"chType"_s, {u""_s, u"0"_s, u"3"_s, u"25"_s, u"sale"_s, u"01"_s}},
        {u"RawItem/id"_s, {u""_s, u"x"_s, u"0"_s, u"-1"_s, u"1.0"_s, u"01"_s, u"2147483648"_s}},
        {u"quantity"_s, quantities},
        {u"returnedQuantity"_s, quantities},
        {u"price"_s,
         {u""_s, u"x"_s, u"-1"_s, u"49,9"_s, u"1234567"_s, u"49.90000001"_s, u"1e5"_s, u"NaN"_s}},
        {u"weight"_s, {u""_s, u"kg"_s, u"Piece"_s}},
        {u"atype"_s, {u""_s, u"card"_s, u"Cash"_s}},
        {u"communicationChannel"_s, {u""_s, u"POS"_s, u" pos"_s, u"check "_s, u"1"_s}},
        {u"total"_s, written},
        {u"minTotal"_s, written},
        {u"amount"_s, written},
        {u"usedDiscount"_s, written},
        {u"usedBonusInCurrency"_s, written},
        {u"discount"_s, amounts + QStringList{u"-1.00"_s}},
        {u"discountOnChange"_s, amounts + QStringList{u"-1.00"_s}},
        {u"allowBonus"_s, amounts + QStringList{u"-1.00"_s}},
        {u"allowBonusInCurrency"_s, amounts + QStringList{u"-1.00"_s}},
        {u"awardBonus"_s, amounts},
        {u"balance"_s, amounts},
    };
    return all.value(name, all.value(parent + u'/' + name));
}

QList<QDomElement> elementsOf(const QDomElement& root)
{
    QList<QDomElement> all{root};
    for (QDomElement child = root.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        all += elementsOf(child);
    }
    return all;
}

QString pathOf(const QDomElement& element)
{
    QStringList names;
    for (QDomElement at = element; at.parentNode().isElement(); at = at.parentNode().toElement()) {
        names.prepend(at.tagName());
    }
    return names.isEmpty() ? u"RawCheck"_s : names.join(u'/');
}

void setText(QDomElement& element, const QString& text)
{
    while (element.hasChildNodes()) {
        element.removeChild(element.firstChild());
    }
    element.appendChild(element.ownerDocument().createTextNode(text));
}

/// Makes mutations of one document, each from a copy of its own.
class Mutator
{
public:
    explicit Mutator(const QByteArray& text) : original(text) {}

    std::vector<Mutation> all()
    {
        const QDomDocument plain = copy();
        const QList<QDomElement> elements = elementsOf(plain.documentElement());
        for (qsizetype i = 0; i < elements.size(); ++i) {
            number = i;
            mutate(elements[i]);
        }
        return std::move(made);
    }

private:
    using Change = std::function<void(QDomElement&)>;

    QDomDocument copy() const
    {
        QDomDocument xml;
        if (!xml.setContent(original)) {
            throw std::invalid_argument("the document is no XML");
        }
        return xml;
    }

    void add(Kind kind, const Change& change, const QString& text = {})
    {
        QDomDocument xml = copy();
        QDomElement element = elementsOf(xml.documentElement()).at(number);
        const QString path = pathOf(element);
        change(element);
        made.push_back({kind, path, text, xml.toByteArray(1)});
    }

    void mutate(const QDomElement& element)
    {
        const bool isRoot = element.parentNode().isDocument();
        add(Kind::Renamed, [](QDomElement& at) { at.setTagName(at.tagName() + u'2'); });
        add(Kind::Attributed, [](QDomElement& at) { at.setAttribute(u"unit"_s, u"RUB"_s); });
        add(Kind::Extended,
            [](QDomElement& at) { at.appendChild(at.ownerDocument().createElement(u"extra"_s)); });
        if (!element.firstChildElement().isNull()) {
            add(Kind::Filled, [](QDomElement& at) {
                at.appendChild(at.ownerDocument().createTextNode(u"text"_s));
            });
        }
        if (!isRoot) {
            mutateSibling(element);
        }
        for (const QString& text :
             wrongTexts(element.tagName(), element.parentNode().toElement().tagName())) {
            add(
                Kind::Changed, [&text](QDomElement& at) { setText(at, text); }, text);
        }
    }

    void mutateSibling(const QDomElement& element)
    {
        add(Kind::Removed, [](QDomElement& at) { at.parentNode().removeChild(at); });
        add(Kind::Doubled,
            [](QDomElement& at) { at.parentNode().insertAfter(at.cloneNode(), at); });
        const QDomElement next = element.nextSiblingElement();
        if (!next.isNull() && next.tagName() != element.tagName()) {
            add(Kind::Swapped,
                [](QDomElement& at) { at.parentNode().insertAfter(at, at.nextSiblingElement()); });
        }
    }

    const QByteArray original;
    qsizetype number = 0;
    std::vector<Mutation> made;
};

} // namespace

QString Mutation::name() const
{
    static const QStringList words{u"removed"_s,  u"doubled"_s,    u"renamed"_s, u"swapped"_s,
                                   u"extended"_s, u"attributed"_s, u"filled"_s,  u"changed"_s};
    const QString what = path + u' ' + words.at(static_cast<int>(kind));
    return kind == Kind::Changed ? what + u" to \""_s + text.left(40) + u'"' : what;
}

std::vector<Mutation> mutationsOf(const QByteArray& document)
{
    return Mutator(document).all();
}

} // namespace tests
