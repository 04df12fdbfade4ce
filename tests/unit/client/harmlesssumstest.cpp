// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The limits that count over the whole text, each at its edge, and how a refusal is told.

#include "tests/unit/client/printers.h"

#include "tests/unit/client/hostilexml.h"

#include <QDomDocument>

#include <gtest/gtest.h>

using namespace tests;

namespace {

QString inRoot(const QString& content)
{
    return u"<r>"_s + content + u"</r>"_s;
}
/// Characters of the root's tags as they are counted: both, each on a line of its own.
constexpr int rootCharacters = 3 + 4 + 2 * 2;

QString blanks(qint64 count)
{
    return u"x"_s.repeated(count);
}

constexpr int movedEscapes = 5'000;

/// A text of that length with so many escapes.
QString withMoves(qint64 length)
{
    return u"<a>"_s + u"&lt;"_s.repeated(movedEscapes) + blanks(length - 6 * movedEscapes) +
           u"</a>"_s;
}

/// Refused one character later; the text may have so many around the content.
void expectCharacters(const QString& before, const QString& behind, int counted)
{
    const qint64 most = characterLimit - counted;
    EXPECT_TRUE(isHarmless(before + blanks(most) + behind)) << qPrintable(before);
    EXPECT_FALSE(isHarmless(before + blanks(most + 1) + behind)) << qPrintable(before);
}

} // namespace

TEST(HarmlessSums, acceptSoManyNodesAndRefuseOneMore)
{
    const QString pairs = u"<a>x</a>"_s.repeated(nodeLimit / 2 - 1);
    EXPECT_TRUE(isHarmless(inRoot(pairs + u"<a/>"_s)));
    EXPECT_FALSE(isHarmless(inRoot(pairs + u"<a/><a/>"_s)));
}

TEST(HarmlessSums, acceptSoManyElementsAndRefuseOneMore)
{
    for (const QString& element : {u"<a/>"_s, u"<a></a>"_s, u"<RawCheck\n/>"_s}) {
        EXPECT_TRUE(isHarmless(inRoot(element.repeated(elementLimit - 1)))) << qPrintable(element);
        EXPECT_FALSE(isHarmless(inRoot(element.repeated(elementLimit)))) << qPrintable(element);
    }
}

TEST(HarmlessSums, takeNothingElseForAnElement)
{
    const QString most = u"<a/>"_s.repeated(elementLimit - 1);
    EXPECT_TRUE(isHarmless(inRoot(most + u"x<!--<a/>--><![CDATA[<a/>]]><?a <a/>?>"_s)));
}

TEST(HarmlessSums, countTextsThatAreNotBlankAmongTheNodes)
{
    EXPECT_TRUE(isHarmless(inRoot(u"x<a/>"_s.repeated(nodeLimit / 2 - 1) + u"x"_s)));
    EXPECT_FALSE(isHarmless(inRoot(u"x<a/>"_s.repeated(nodeLimit / 2 - 1) + u"x<a/>"_s)));
    EXPECT_TRUE(isHarmless(inRoot(u" \t\r\n<!---->"_s.repeated(nodeLimit - 1) + u" "_s)));
}

TEST(HarmlessSums, countTheTableOfAttributesAndEachAttribute)
{
    const QString tables = u"<a x=''/>"_s.repeated(nodeLimit / 10 - 1);
    EXPECT_TRUE(isHarmless(inRoot(tables + u"<a/>"_s.repeated(9))));
    EXPECT_FALSE(isHarmless(inRoot(tables + u"<a/>"_s.repeated(10))));
    EXPECT_TRUE(isHarmless(inRoot(tables + u"<a/>"_s.repeated(7)).insert(10, u" y=''"_s)));
    EXPECT_FALSE(isHarmless(inRoot(tables + u"<a/>"_s.repeated(8)).insert(10, u" y=''"_s)));
    // in a text that is cut an attribute is the last node
    EXPECT_FALSE(isHarmless(u"<r>"_s + tables + u"<a/><a x='"_s));
}

TEST(HarmlessSums, countCommentsCdataAndInstructionsAmongTheNodes)
{
    for (const QString& node : {u"<!---->"_s, u"<![CDATA[]]>"_s, u"<?p?>"_s}) {
        EXPECT_TRUE(isHarmless(inRoot(node.repeated(nodeLimit - 1)))) << qPrintable(node);
        EXPECT_FALSE(isHarmless(inRoot(node.repeated(nodeLimit)))) << qPrintable(node);
    }
}

TEST(HarmlessSums, acceptSoManyLinesAndMessagesAndRefuseOneMore)
{
    for (const QString& entry : {u"<RawItem/>"_s, u"<RawItem></RawItem>"_s, u"<RawItem x='1'/>"_s,
                                 u"<RawCheckInforming/>"_s}) {
        EXPECT_TRUE(isHarmless(inRoot(entry.repeated(entryLimit)))) << qPrintable(entry);
        EXPECT_FALSE(isHarmless(inRoot(entry.repeated(entryLimit) + u"<RawItem/>"_s)))
            << qPrintable(entry);
    }
}

TEST(HarmlessSums, takeNoOtherElementForALineOrAMessage)
{
    for (const QString& other :
         {u"<RawItemAwards/>"_s, u"<RawIte/>"_s, u"<rawItem/>"_s, u"<a RawItem=''/>"_s,
          u"<!--<RawItem/>-->"_s, u"<x:RawItem/>"_s, u"<RawCheckInformings/>"_s}) {
        EXPECT_TRUE(isHarmless(inRoot(other.repeated(entryLimit + 1)))) << qPrintable(other);
    }
    EXPECT_TRUE(isHarmless(inRoot(u"<RawItem/>"_s.repeated(entryLimit)) + u"<RawItem"_s.left(7)));
}

TEST(HarmlessSums, acceptSoManyCharactersAndRefuseOneMore)
{
    expectCharacters(u"<r>"_s, u"</r>"_s, rootCharacters);
    expectCharacters(u"<r x='"_s, u"'/>"_s, 9 + 4);
    expectCharacters(u"<r x=\"&#60;"_s, u"\"/>"_s, 9 + 4 + 6);
    expectCharacters(u"<r x='\"\""_s, u"'/>"_s, 9 + 4 + 12);
    expectCharacters(u"<r>&lt;&#x00003C;"_s, u"</r>"_s, rootCharacters + 12);
    expectCharacters(u"<r>]]>"_s, u"</r>"_s, rootCharacters + 8);
    expectCharacters(u"<"_s, u"/>"_s, 3 + 4);
    expectCharacters(u"<!--"_s, u"--><r></r>"_s, 7 + 1 + rootCharacters);
    expectCharacters(u"<r><![CDATA["_s, u"]]></r>"_s, 12 + 2 + rootCharacters);
    expectCharacters(u"<r><?p "_s, u"?></r>"_s, 6 + 2 + rootCharacters);
    expectCharacters(u"<!DOCTYPE "_s, u"><r></r>"_s, 11 + 1 + rootCharacters);
}

TEST(HarmlessSums, countTheIndentationOfBothTags)
{
    // a chain of 511 elements with two tags each, then the text in the last
    const QString open = u"<b>"_s.repeated(511);
    const QString close = u"</b>"_s.repeated(511);
    expectCharacters(open + u"<c>"_s, u"</c>"_s + close, 512 * 7 + 512 * 513 + 2 * 512);
}

TEST(HarmlessSums, countNoBlanksBetweenElements)
{
    EXPECT_TRUE(isHarmless(inRoot(u" "_s.repeated(characterLimit) + u"<a/>"_s)));
}

TEST(HarmlessSums, acceptSoManyEscapeMovesAndRefuseOneMore)
{
    const QString most = withMoves(escapeMoveLimit / movedEscapes);
    EXPECT_TRUE(isHarmless(inRoot(most)));
    // a value of one character that is written as an escape
    EXPECT_FALSE(isHarmless(inRoot(most + u"<a x='\"'/>"_s)));
    EXPECT_FALSE(isHarmless(withMoves(escapeMoveLimit / movedEscapes + 1)));
}

TEST(HarmlessSums, countForATextNothingOfTheTagsAroundIt)
{
    const QString most = withMoves(escapeMoveLimit / movedEscapes);
    const QString text = most.sliced(3, most.size() - 7);
    for (const QString& before : {u"<b>"_s, u"<b></b>"_s, u"<b/>"_s, u"<b x='1'/>"_s, u"<!--b-->"_s,
                                  u"<![CDATA[b]]>"_s, u"<?b?>"_s}) {
        EXPECT_TRUE(isHarmless(inRoot(before + text))) << qPrintable(before);
    }
}

TEST(HarmlessSums, ofTheDocumentAsItIsWrittenAreNoLarger)
{
    // what came in must be readable again from what was stored of it
    const QString quotes = u"<a b='"_s + u"\""_s.repeated(100) + u"'/>"_s;
    for (const QString& text :
         {inRoot(u"<a/>"_s.repeated(elementLimit - 1)),
          inRoot(u"x<a/>"_s.repeated(nodeLimit / 2 - 1)),
          inRoot(u"<a x=''/>"_s.repeated(nodeLimit / 10 - 1)), inRoot(quotes.repeated(4'000)),
          inRoot(blanks(characterLimit - rootCharacters)),
          inRoot(u"<a>&#60;</a>"_s.repeated(137'000)),
          inRoot(withMoves(escapeMoveLimit / movedEscapes)),
          inRoot(u"<a>]]&gt;</a>"_s.repeated(137'000)),
          inRoot(u"<a b='&#9;&#10;'/>"_s.repeated(27'000)), nested(levelLimit),
          u"<!DOCTYPE r SYSTEM 'x'>"_s + inRoot(u"<a>&#13;</a>"_s)}) {
        ASSERT_EQ(orva::harmInXml(text), QString()) << qPrintable(text.left(40));
        QDomDocument document;
        ASSERT_TRUE(document.setContent(text)) << qPrintable(text.left(40));
        EXPECT_EQ(orva::harmInXml(document.toString(1)), QString()) << qPrintable(text.left(40));
    }
}

TEST(HarmlessSums, leaveRoomForAnOrdinaryAnswerOfTenThousandLines)
{
    // everything of the request carried back, what a line is granted, and a name besides
    const QString line =
        u"<RawItem><quantity>2.000</quantity><id>12345</id><sku>4600000012345</sku><name>Чай</name>"
        "<price>12345.67</price><total>24691.34</total><minTotal>12345.67</minTotal>"
        "<weight>piece</weight><awards><RawItemAwards><discount>15.50</discount>"
        "<discountOnChange>0.30</discountOnChange><awardBonus>12.25</awardBonus>"
        "<allowBonusInCurrency>120.00</allowBonusInCurrency></RawItemAwards></awards></RawItem>"_s;
    const QString items = u"<items>"_s + line.repeated(10'000) + u"</items>"_s;
    const QString message = u"<RawCheckInforming><communicationChannel>check</communicationChannel>"
                            "<info>Спасибо, ждём вас снова</info></RawCheckInforming>"_s;
    EXPECT_EQ(orva::harmInXml(inRoot(items + message.repeated(100)).toUtf8()), QString());
}

TEST(Harm, isToldWithLimitLineAndElement)
{
    const std::pair<QString, QString> rows[] = {
        {u"<r>\n<b/>\n"_s + nested(levelLimit),
         u"больше 512 уровней элементов, строка 3, элемент a"_s},
        {u"<r>\n"_s + withAttributes(attributeLimit + 1),
         u"больше 64 атрибутов у элемента, строка 2, элемент a"_s},
        {inRoot(u"<имя/>\n"_s.repeated(elementLimit)),
         u"больше 200000 элементов, строка 200000, элемент имя"_s},
        {inRoot(u"<имя/><!---->\n"_s.repeated(nodeLimit / 2)),
         u"больше 275000 узлов (элементов, текстов, атрибутов), строка 137500, элемент имя"_s},
        {inRoot(u"<RawItem/>"_s.repeated(entryLimit + 1)),
         u"больше 10500 строк товара и сообщений, строка 1, элемент RawItem"_s},
        {u"\n<r>"_s + blanks(characterLimit),
         u"записанный с отступами, длиннее 5700000 знаков, строка 2, элемент r"_s},
        {withText(u"&lt;"_s, escapeLimit + 1),
         u"слишком много замен вроде &lt; в длинных текстах (число замен, умноженное на длину "
         "текста, в сумме больше 250000000), строка 1, элемент a"_s},
        {u"\n\n<!DOCTYPE a []>"_s, u"DOCTYPE с собственными объявлениями, строка 3"_s},
    };
    for (const auto& [text, harm] : rows) {
        EXPECT_EQ(orva::harmInXml(text), harm);
        EXPECT_EQ(orva::harmInXml(text.toUtf8()), harm);
    }
    EXPECT_EQ(orva::harmInXml(QByteArray("<?xml a='' b='' c='' d=''?>")),
              u"больше 3 атрибутов в объявлении XML, строка 1"_s);
}

TEST(Harm, showsNamesFromOutsideShortAndPrintable)
{
    const QString name = u"\u001b[31m\u202E"_s + u"n"_s.repeated(100);
    const QString harm = orva::harmInXml(u"<"_s + name + u">"_s + blanks(characterLimit));
    EXPECT_TRUE(harm.endsWith(u", элемент ?[31m?"_s + u"n"_s.repeated(34))) << qPrintable(harm);
}
