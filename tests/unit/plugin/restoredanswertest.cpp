// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/logcapture.h"
#include "tests/unit/plugin/restoring.h"

using namespace Qt::StringLiterals;

namespace {

using namespace tests;

class RestoredAnswerTest : public Restoring
{
protected:
    /// Whether a text, restored, gives an answer with a root element.
    bool isReadable(const QString& text)
    {
        keepFormerAnswer();
        store(u"lastResponse"_s, text);
        EXPECT_TRUE(restore());
        return !interface->getLastResponse().documentElement().isNull();
    }
};

TEST_F(RestoredAnswerTest, TheStoredAnswerReplacesTheLastResponse)
{
    const QString text = u"<RawCheck>\n <id>1</id>\n <items/>\n</RawCheck>\n"_s;
    store(u"lastResponse"_s, text);
    EXPECT_TRUE(restore());
    EXPECT_EQ(interface->storedResponse(), text);
}

TEST_F(RestoredAnswerTest, TheFormerAnswerIsReplacedNotChanged)
{
    const QDomDocument former = interface->getLastResponse();
    store(u"lastResponse"_s, u"<later/>"_s);
    EXPECT_TRUE(restore());
    EXPECT_EQ(former.documentElement().tagName(), u"former"_s);
    EXPECT_EQ(interface->storedResponse(), u"<later/>\n"_s);
}

TEST_F(RestoredAnswerTest, NamesWithAColonStayAsTheyAre)
{
    const QString text = u"<a xmlns:x=\"urn:x\">\n <x:b x:c=\"1\"/>\n</a>\n"_s;
    store(u"lastResponse"_s, text);
    EXPECT_TRUE(restore());
    EXPECT_EQ(interface->storedResponse(), text);
    const QDomElement child = interface->getLastResponse().documentElement().firstChildElement();
    EXPECT_EQ(child.tagName(), u"x:b"_s);
    EXPECT_TRUE(child.namespaceURI().isEmpty()) << "parsed without namespaces";
}

TEST_F(RestoredAnswerTest, AnUnreadableTextLeavesAnEmptyAnswer)
{
    for (const QString& text : {u"не XML"_s, u""_s, u"   "_s, u"{\"a\": 1}"_s, u"<"_s}) {
        QDomDocument former;
        former.setContent(u"<former/>"_s);
        interface->setLastResponse(former);
        store(u"lastResponse"_s, text);
        EXPECT_TRUE(restore());
        EXPECT_TRUE(interface->getLastResponse().documentElement().isNull()) << text.toStdString();
    }
}

TEST_F(RestoredAnswerTest, ACutTextIsLeftAsTheParserLeavesIt)
{
    const QString text = u"<RawCheck><id>1</id><client><name>Анна</na"_s;
    QDomDocument parsed;
    ASSERT_FALSE(parsed.setContent(text));
    store(u"lastResponse"_s, text);
    EXPECT_TRUE(restore());
    EXPECT_EQ(interface->storedResponse(), parsed.toString(1));
}

TEST_F(RestoredAnswerTest, AStoredAnswerOfAnotherTypeIsConvertedToText)
{
    store(u"lastResponse"_s, QByteArray("<a/>"));
    EXPECT_TRUE(restore());
    EXPECT_EQ(interface->storedResponse(), u"<a/>\n"_s);
    store(u"lastResponse"_s, QVariantMap{{u"a"_s, 1}});
    EXPECT_TRUE(restore());
    EXPECT_EQ(interface->storedResponse(), QString());
}

TEST_F(RestoredAnswerTest, ADocumentTypeWithDeclarationsMakesTheTextUnreadable)
{
    EXPECT_TRUE(isReadable(u"<!DOCTYPE RawCheck><RawCheck><id>1</id></RawCheck>"_s));
    store(u"lastResponse"_s, u"<!DOCTYPE RawCheck []><RawCheck><id>1</id></RawCheck>"_s);
    const tests::LogCapture log;
    EXPECT_TRUE(restore());
    EXPECT_TRUE(log.lines().contains(tests::errorLine(
        u"Сохранённый ответ сервера не разбирается: DOCTYPE с собственными объявлениями, строка 1"_s)));
    EXPECT_EQ(journal.entries().constLast(), u"base.refreshLoyaltyData()"_s) << "the rest goes on";
    EXPECT_TRUE(interface->getLastResponse().documentElement().isNull());
    EXPECT_EQ(interface->storedResponse(), QString());
}

TEST_F(RestoredAnswerTest, LinesThatRepeatAPositionTooOftenMakeTheTextUnreadable)
{
    const auto lines = [](int count) {
        return u"<a><items>"_s + u"<RawItem><id>7</id></RawItem>"_s.repeated(count) +
               u"</items></a>"_s;
    };
    EXPECT_TRUE(isReadable(lines(141)));
    EXPECT_FALSE(isReadable(lines(142)));
}

QString nested(int levels)
{
    return u"<e>"_s.repeated(levels) + u"</e>"_s.repeated(levels);
}

TEST_F(RestoredAnswerTest, MoreThan512LevelsMakeTheTextUnreadable)
{
    EXPECT_TRUE(isReadable(nested(512)));
    EXPECT_FALSE(isReadable(nested(513)));
    EXPECT_FALSE(isReadable(nested(20'000)));
    EXPECT_EQ(interface->storedResponse(), QString());
}

TEST_F(RestoredAnswerTest, MoreThan64AttributesMakeTheTextUnreadable)
{
    const auto withAttributes = [](int count) {
        QString text = u"<a><b"_s;
        for (int i = 0; i < count; ++i) {
            text += u" x%1=\"\""_s.arg(i);
        }
        return text + u"/></a>"_s;
    };
    EXPECT_TRUE(isReadable(withAttributes(64)));
    EXPECT_FALSE(isReadable(withAttributes(65)));
}

TEST_F(RestoredAnswerTest, EscapesThatCostTooMuchMakeTheTextUnreadable)
{
    const auto withEscapes = [](int count) {
        return u"<a><b>"_s + u"&amp;"_s.repeated(count) + u"</b></a>"_s;
    };
    EXPECT_TRUE(isReadable(withEscapes(6'454)));
    EXPECT_FALSE(isReadable(withEscapes(6'455)));
}

TEST_F(RestoredAnswerTest, WrittenAndRestoredItIsWrittenTheSameAgain)
{
    for (const QString& text :
         {u"<a/>"_s, u"<a><b>1</b><b/></a>"_s, u"<a>\n\t<b> </b>\n</a>"_s,
          u"<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>я</a>"_s,
          u"<a><!-- note --><b>&lt;&amp;&gt;&quot;'</b></a>"_s,
          u"<a x=\"1 &lt; &quot;2&quot;\"><b/></a>"_s, u"<a><b><![CDATA[<x>]]></b></a>"_s,
          u"<?style sheet?><a><b>  two  blanks  </b></a>"_s, u"<a xmlns=\"urn:x\"><b/></a>"_s}) {
        QDomDocument answer;
        ASSERT_TRUE(answer.setContent(text)) << text.toStdString();
        interface->setLastResponse(answer);
        orva.updatePluginData();
        const QVariantMap stored = open->pluginData.value(u"Orva"_s);
        base->pluginData = open->pluginData;
        keepFormerAnswer();
        EXPECT_TRUE(restore());
        orva.updatePluginData();
        EXPECT_EQ(open->pluginData.value(u"Orva"_s).value(u"lastResponse"_s),
                  stored.value(u"lastResponse"_s));
        EXPECT_EQ(stored.value(u"lastResponse"_s).toString(), answer.toString(1));
    }
}

} // namespace
