// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "tests/unit/client/hostilexml.h"

#include <gtest/gtest.h>

using namespace tests;

namespace {

/// So many escapes of which each stands beside two other characters.
constexpr int escapeLimitOfEight = 5'590;

/// Judges the text and its UTF-8 form, which must agree.
bool harmless(const QString& text)
{
    const QString decoded = orva::harmInXml(text);
    EXPECT_EQ(orva::harmInXml(text.toUtf8()), decoded) << qPrintable(text.left(80));
    return decoded.isEmpty();
}

} // namespace

TEST(HarmlessXml, acceptsOrdinaryTexts)
{
    EXPECT_TRUE(harmless(u"<a><b c=\"1\" d='2'>Чек &amp; слип</b><!-- c --><![CDATA[d]]></a>"_s));
    EXPECT_TRUE(harmless(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>\n"_s));
    EXPECT_TRUE(harmless(u"<?xml version='1.0' encoding='utf-8' standalone='yes'?><a/>"_s));
    EXPECT_TRUE(isHarmless(QByteArray("\xEF\xBB\xBF<a/>")));
}

TEST(HarmlessXml, leavesTextsThatAreNotWellFormedToTheParser)
{
    for (const QString& text :
         {u""_s,      u"   "_s,      u"text"_s,  u"<"_s,       u"<a"_s,        u"<a b"_s,
          u"<a b="_s, u"<a b=\"1"_s, u"<a>"_s,   u"</a>"_s,    u"<a></b>"_s,   u"<a/><b/>"_s,
          u"<!"_s,    u"<!-"_s,      u"<!--"_s,  u"<!-- -"_s,  u"<![CDATA["_s, u"<?"_s,
          u"<?xml"_s, u"<a>&"_s,     u"<a>&#"_s, u"<a>&amp"_s, u"</"_s,        u"<a></"_s}) {
        EXPECT_TRUE(harmless(text)) << qPrintable(text);
    }
}

TEST(HarmlessXml, accepts512LevelsAndRefusesOneMore)
{
    EXPECT_TRUE(harmless(nested(levelLimit)));
    EXPECT_FALSE(harmless(nested(levelLimit + 1)));
}

TEST(HarmlessXml, countsTheLevelOfAnEmptyElement)
{
    const QString open = u"<a>"_s.repeated(levelLimit - 1);
    const QString close = u"</a>"_s.repeated(levelLimit - 1);
    EXPECT_TRUE(harmless(open + u"<b/><b x='/'/><b />"_s + close));
    EXPECT_FALSE(harmless(u"<a>"_s + open + u"<b/>"_s + close + u"</a>"_s));
}

TEST(HarmlessXml, countsLevelsAndNotElements)
{
    EXPECT_TRUE(harmless(u"<r>"_s + u"<a><b/></a>"_s.repeated(3000) + u"</r>"_s));
    EXPECT_TRUE(harmless(u"<r>"_s + nested(levelLimit - 1).repeated(3) + u"</r>"_s));
}

TEST(HarmlessXml, seesTheLevelsBehindEmptyElements)
{
    const QString empty = u"<b/><b x='/'></b><b />"_s;
    EXPECT_TRUE(harmless(u"<r>"_s + empty + nested(levelLimit - 1) + u"</r>"_s));
    EXPECT_FALSE(harmless(u"<r>"_s + empty + nested(levelLimit) + u"</r>"_s));
}

TEST(HarmlessXml, countsLevelsOfACutText)
{
    EXPECT_TRUE(harmless(u"<a>"_s.repeated(levelLimit)));
    EXPECT_FALSE(harmless(u"<a>"_s.repeated(levelLimit + 1)));
}

TEST(HarmlessXml, accepts64AttributesAndRefusesOneMore)
{
    EXPECT_TRUE(harmless(withAttributes(attributeLimit)));
    EXPECT_FALSE(harmless(withAttributes(attributeLimit + 1)));
}

TEST(HarmlessXml, countsTheAttributesOfEachElementApart)
{
    EXPECT_TRUE(harmless(u"<r>"_s + withAttributes(attributeLimit).repeated(50) + u"</r>"_s));
    EXPECT_FALSE(harmless(u"<r><b/>"_s + withAttributes(attributeLimit + 1) + u"</r>"_s));
}

TEST(HarmlessXml, countsAttributesHoweverTheyAreSpaced)
{
    QString tight = u"<a"_s;
    QString loose = u"<a"_s;
    for (int i = 0; i <= attributeLimit; ++i) {
        tight += u"\tx%1='>'"_s.arg(i);
        loose += u"\n\r x%1 \n=\t \"a='1' b='2'\""_s.arg(i);
    }
    EXPECT_FALSE(harmless(tight + u"/>"_s));
    EXPECT_FALSE(harmless(loose + u" ></a>"_s));
}

TEST(HarmlessXml, countsNoAttributesInsideValuesAndTexts)
{
    const QString many = u"x=y "_s.repeated(100);
    EXPECT_TRUE(harmless(u"<a b=\""_s + many + u"\" c='"_s + many + u"'>"_s + many + u"</a>"_s));
}

TEST(HarmlessXml, refusesADocumentTypeWithDeclarations)
{
    for (const QString& text :
         {u"<!DOCTYPE a []><a/>"_s, u"<?xml version=\"1.0\"?>\n<!DOCTYPE a SYSTEM 'x' [ ]>\n<a/>"_s,
          u"<!-- c --><!DOCTYPE a\n[<!ENTITY b 'c'>]><a>&b;</a>"_s,
          u"<!DOCTYPE a PUBLIC \"-//x'\" 'y>' [<!ATTLIST a b CDATA 'c'>]><a/>"_s, u"<!DOCTYPE["_s,
          u"<!DOCTYPE a ["_s}) {
        EXPECT_FALSE(harmless(text)) << qPrintable(text);
    }
}

TEST(HarmlessXml, acceptsADocumentTypeWithoutDeclarations)
{
    for (const QString& text :
         {u"<!DOCTYPE a><a/>"_s, u"<?xml version=\"1.0\"?>\n<!DOCTYPE a SYSTEM 'x'>\n<a/>"_s,
          u"<!-- c --><!DOCTYPE a><a/>"_s, u"<?pi?>\n <!DOCTYPE\na ><a/>"_s,
          u"<!DOCTYPE html PUBLIC '-//x [' \"y[\"><html>[</html>"_s, u"<!DOCTYPE"_s,
          u"<!DOCTYPE a"_s, u"<!DOCTYPE a '"_s}) {
        EXPECT_TRUE(harmless(text)) << qPrintable(text);
    }
}

TEST(HarmlessXml, seesTheLevelsBehindADocumentType)
{
    for (const QString& type :
         {u"<!DOCTYPE a>"_s, u"<!DOCTYPE a SYSTEM '>'>"_s, u"<!DOCTYPE a PUBLIC \"'\" '\">'>"_s}) {
        EXPECT_TRUE(harmless(type + nested(levelLimit))) << qPrintable(type);
        EXPECT_FALSE(harmless(type + nested(levelLimit + 1))) << qPrintable(type);
    }
}

TEST(HarmlessXml, takesNoDeclarationInCommentCdataInstructionOrValueForOne)
{
    for (const QString& text :
         {u"<!-- <!DOCTYPE a []> --><a/>"_s, u"<a><!-- <!DOCTYPE a []> --></a>"_s,
          u"<a><![CDATA[<!DOCTYPE a []>]]></a>"_s, u"<a><?pi <!DOCTYPE a []>?></a>"_s,
          u"<a>&lt;!DOCTYPE a []></a>"_s, u"<a b=\"&lt;!DOCTYPE a []>\"/>"_s,
          u"<a>DOCTYPE [</a>"_s}) {
        EXPECT_TRUE(harmless(text)) << qPrintable(text);
    }
}

TEST(HarmlessXml, seesTheMarkupBehindCommentCdataAndInstruction)
{
    // each of them is over where the parser says so, and not where it merely looks so
    const QString deep = nested(levelLimit);
    for (const QString& part :
         {u"<!-- a -->"_s, u"<!----><!-- ' -->"_s, u"<!--> -->"_s, u"<![CDATA[a]]>"_s,
          u"<![CDATA[]]]]>"_s, u"<![CDATA[]]>"_s, u"<![CDATA[<!--]]>"_s, u"<?pi '?>"_s,
          u"<?pi ?\?>"_s, u"<!-- <![CDATA[ -->"_s, u"<?pi <!-- ?>"_s, u"\"'"_s, u"]]"_s}) {
        EXPECT_FALSE(harmless(u"<r>"_s + part + deep + u"</r>"_s)) << qPrintable(part);
    }
}

TEST(HarmlessXml, endsTheShortestCommentCdataAndInstructionAtOnce)
{
    const QString deep = nested(levelLimit);
    for (const QString& part : {u"<!---->"_s, u"<![CDATA[]]>"_s, u"<?\?>"_s}) {
        EXPECT_FALSE(harmless(u"<r>"_s + part + deep + u"</r>"_s)) << qPrintable(part);
    }
}

TEST(HarmlessXml, takesNoPartOfABeginningForTheEnd)
{
    const QString deep = nested(levelLimit);
    EXPECT_TRUE(harmless(u"<r><!-->"_s + deep + u"--></r>"_s));
    EXPECT_TRUE(harmless(u"<r><!--->"_s + deep + u"--></r>"_s));
    EXPECT_TRUE(harmless(u"<r><?>"_s + deep + u"?></r>"_s));
}

TEST(HarmlessXml, endsCommentCdataAndInstructionAtTheWholeOfTheirEndOnly)
{
    const QString deep = nested(levelLimit);
    EXPECT_TRUE(harmless(u"<r><!-- -- -> - > "_s + deep + u"--></r>"_s));
    EXPECT_TRUE(harmless(u"<r><![CDATA[ ]] ]> ] > "_s + deep + u"]]></r>"_s));
    EXPECT_TRUE(harmless(u"<r><?p ? > "_s + deep + u"?></r>"_s));
}

TEST(HarmlessXml, takesAnyOtherDeclarationForTheEndOfWhatIsRead)
{
    const QString deep = nested(levelLimit + 1);
    for (const QString& part :
         {u"<!-a-->"_s, u"<![CDATA a]]>"_s, u"<![cdata[a]]>"_s, u"<!ELEMENT a ANY>"_s,
          u"<!doctype a>"_s, u"<!DOCTYP a>"_s, u"<!>"_s, u"<! DOCTYPE a>"_s}) {
        EXPECT_TRUE(harmless(u"<r>"_s + part + deep + u"</r>"_s)) << qPrintable(part);
    }
}

TEST(HarmlessXml, takesCutMarkupOfAnotherKindForNoElement)
{
    const QString open = u"<a>"_s.repeated(levelLimit);
    EXPECT_TRUE(harmless(open + u"<!"_s));
    EXPECT_TRUE(harmless(open + u"<?"_s));
    EXPECT_TRUE(harmless(open + u"</"_s));
    EXPECT_FALSE(harmless(open + u"<"_s));
}

TEST(HarmlessXml, looksAtNothingBehindTheEnd)
{
    // no zero byte ends these texts
    EXPECT_TRUE(isHarmless(QByteArray::fromRawData("<!DOCTYPE a>", 5)));
    const QByteArray open = QByteArray("<a>").repeated(levelLimit);
    const QByteArray declared = open + "<!DOCTYPE a>";
    EXPECT_FALSE(isHarmless(QByteArray::fromRawData(declared.constData(), open.size() + 1)));
}

TEST(HarmlessXml, countsNoMarkupInCommentCdataAndInstruction)
{
    const QString deep = nested(levelLimit + 1) + withAttributes(attributeLimit + 1) +
                         u"&amp;"_s.repeated(escapeLimit + 1);
    EXPECT_TRUE(harmless(u"<r><!-- "_s + deep + u" --></r>"_s));
    EXPECT_TRUE(harmless(u"<r><![CDATA["_s + deep + u"]]></r>"_s));
    EXPECT_TRUE(harmless(u"<r><?pi "_s + deep + u"?></r>"_s));
}

TEST(HarmlessXml, seesTheMarkupBehindValuesWithForeignQuotesAndBrackets)
{
    const QString deep = nested(levelLimit);
    for (const QString& open : {u"<r x=\"'\">"_s, u"<r x='\"'>"_s, u"<r x='>'>"_s, u"<r x='/>'>"_s,
                                u"<r x=\"-->\" y='<!--'>"_s.replace(u"<!--"_s, u"&lt;!--"_s)}) {
        EXPECT_FALSE(harmless(open + deep + u"</r>"_s)) << qPrintable(open);
        EXPECT_TRUE(harmless(open + nested(levelLimit - 1) + u"</r>"_s)) << qPrintable(open);
    }
}

TEST(HarmlessXml, limitsEscapesByWhatTheyCostWhateverTheyLookLike)
{
    for (const QString& escape : {u"&amp;"_s, u"&lt;"_s, u"&gt;"_s, u"&quot;"_s, u"&apos;"_s,
                                  u"&#38;"_s, u"&#x3C;"_s, u"&#1102;"_s, u"&#x00003C;"_s}) {
        EXPECT_TRUE(harmless(withText(escape, escapeLimit))) << qPrintable(escape);
        EXPECT_FALSE(harmless(withText(escape, escapeLimit + 1))) << qPrintable(escape);
    }
    // of eight characters each as they are written
    EXPECT_TRUE(harmless(withText(u"x&amp; "_s, escapeLimitOfEight)));
    EXPECT_FALSE(harmless(withText(u"x&amp; "_s, escapeLimitOfEight + 1)));
}

TEST(HarmlessXml, acceptsManyEscapesInShortTexts)
{
    EXPECT_TRUE(harmless(u"<r>"_s + withText(u"&amp;"_s, 100).repeated(1000) + u"</r>"_s));
}

TEST(HarmlessXml, limitsEscapesInAttributeValuesByWhatTheyCost)
{
    for (const QChar quote : {u'"', u'\''}) {
        for (const QString& escape : {u"&amp;"_s, u"&lt;"_s, u"&quot;"_s, u"&#10;"_s, u"&#x9;"_s}) {
            EXPECT_TRUE(harmless(withValue(escape, escapeLimit, quote))) << qPrintable(escape);
            EXPECT_FALSE(harmless(withValue(escape, escapeLimit + 1, quote))) << qPrintable(escape);
        }
    }
}

TEST(HarmlessXml, countsDoubleQuotesInSingleQuotedValuesAsTheyWillBeWritten)
{
    EXPECT_TRUE(harmless(withValue(u"\""_s, escapeLimit, u'\'')));
    EXPECT_FALSE(harmless(withValue(u"\""_s, escapeLimit + 1, u'\'')));
    EXPECT_FALSE(harmless(withValue(u"\"&amp;"_s, escapeLimit / 2 + 1, u'\'')));
}

TEST(HarmlessXml, countsTheEndOfCdataInValuesAsItWillBeWritten)
{
    // behind two brackets a ">" is written as an escape; other ones are not
    for (const QChar quote : {u'"', u'\''}) {
        EXPECT_TRUE(harmless(withValue(u"]]>"_s, escapeLimitOfEight, quote)));
        EXPECT_FALSE(harmless(withValue(u"]]>"_s, escapeLimitOfEight + 1, quote)));
        EXPECT_TRUE(harmless(withValue(u"]>"_s, escapeLimit + 1, quote)));
    }
}

TEST(HarmlessXml, countsTheEndOfCdataInTextsAsItWillBeWritten)
{
    EXPECT_TRUE(harmless(withText(u"]]>"_s, escapeLimitOfEight)));
    EXPECT_FALSE(harmless(withText(u"]]>"_s, escapeLimitOfEight + 1)));
    // also with the brackets as the text's first characters
    EXPECT_FALSE(harmless(u"<a>]]>"_s + u"&amp;"_s.repeated(escapeLimit) + u"</a>"_s));
}

TEST(HarmlessXml, takesNothingButTwoBracketsAndAGreaterSignForTheEndOfCdata)
{
    for (const QString& piece :
         {u"]]x"_s, u"]]]"_s, u"]x>"_s, u"x]>"_s, u"]>"_s, u"]]x>"_s, u"[[>"_s}) {
        EXPECT_TRUE(harmless(withText(piece, escapeLimit + 1))) << qPrintable(piece);
        EXPECT_TRUE(harmless(withValue(piece, escapeLimit + 1))) << qPrintable(piece);
    }
}

TEST(HarmlessXml, countsNeitherQuotesInTextsNorSingleQuotesInValues)
{
    EXPECT_TRUE(harmless(withText(u"\"'"_s, escapeLimit + 1)));
    EXPECT_TRUE(harmless(withValue(u"'"_s, escapeLimit + 1, u'"')));
}

TEST(HarmlessXml, countsTheEscapesOfEachTextAndValueApart)
{
    const QString most = u"&amp;"_s.repeated(escapeLimit / 2);
    EXPECT_TRUE(harmless(u"<r><a>"_s + most + u"</a><a>"_s + most + u"</a></r>"_s));
    EXPECT_TRUE(harmless(u"<r x='"_s + most + u"' y='"_s + most + u"'>"_s + most + u"</r>"_s));
    EXPECT_TRUE(harmless(u"<r>"_s + most + u"<a/>"_s + most + u"</r>"_s));
}

TEST(HarmlessXml, seesTheLimitsInADecodedTextThatStillNamesAnotherEncoding)
{
    // a stored answer keeps the declaration of the answer it was
    for (const QString& encoding : {u"UTF-8"_s, u"UTF-16"_s, u"windows-1251"_s}) {
        const QString declaration = u"<?xml version='1.0' encoding='"_s + encoding + u"'?>"_s;
        EXPECT_TRUE(isHarmless(declaration + nested(levelLimit))) << qPrintable(encoding);
        EXPECT_FALSE(isHarmless(declaration + nested(levelLimit + 1))) << qPrintable(encoding);
        EXPECT_FALSE(isHarmless(declaration + u"<!DOCTYPE a []><a/>"_s)) << qPrintable(encoding);
    }
}
