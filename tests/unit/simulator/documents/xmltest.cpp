// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/rejection.h"
#include "simulator/documents/xmlguard.h"
#include "simulator/documents/xmlreader.h"
#include "simulator/documents/xmlwriter.h"
#include "tests/unit/simulator/testchecks.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// The reason for which a body is rejected, with its status in front; empty when it is read.
QString objectionTo(const QByteArray& body)
{
    try {
        readXml(body);
    } catch (const Rejection& rejection) {
        return QString::number(rejection.status) + u' ' + rejection.reason;
    }
    return {};
}

QByteArray nested(int levels)
{
    return QByteArray("<a>").repeated(levels) + QByteArray("</a>").repeated(levels);
}

TEST(Xml, isWrittenAsItWasRead)
{
    const QByteArray text =
        "<a>\n <b>1 &lt; 2 &amp; 3</b>\n <c/>\n <d>\n  <e> x </e>\n </d>\n</a>\n";
    EXPECT_EQ(writeXml(readXml(text).root()), text);
}

TEST(Xml, losesAttributesCommentsAndBlankText)
{
    EXPECT_EQ(writeXml(readXml("<?xml version='1.0'?><!-- x --><a k='1'><b>  </b><c>"
                               "<![CDATA[<>]]></c>mixed</a>")
                           .root()),
              "<a>\n <b/>\n <c>&lt;&gt;</c>\n</a>\n");
}

TEST(Xml, ofAnotherEncodingThanUtf8IsRejected)
{
    EXPECT_EQ(objectionTo("<a>\xcf\xf0</a>"), u"400 The body is not UTF-8"_s);
    EXPECT_EQ(objectionTo(QByteArray("\xff\xfe<\0a\0/\0>\0", 10)), u"400 The body is not UTF-8"_s);
    EXPECT_EQ(objectionTo("<?xml version='1.0' encoding='windows-1251'?><a/>"),
              u"400 The declaration names the encoding windows-1251; UTF-8 is expected"_s);
    EXPECT_EQ(objectionTo("<?xml version='1.0' encoding='utf-8'?><a/>"), QString());
    EXPECT_EQ(objectionTo("<?xml version='1.0'?><a/>"), QString());
    EXPECT_EQ(readXml("\xef\xbb\xbf<a>\xd0\x94</a>").root().text(), u"Д"_s);
}

TEST(Xml, thatIsEmptyIsRejected)
{
    EXPECT_EQ(objectionTo(""), u"400 The body is empty: a RawCheck document is expected"_s);
    EXPECT_EQ(objectionTo(" \n"), u"400 The body is empty: a RawCheck document is expected"_s);
}

TEST(Xml, thatIsNotWellFormedIsRejectedWithThePlace)
{
    for (const char* text : {"<a>", "<a></b>", "x", "<a/><b/>", "<a", "<a>&x;</a>", "<a>\x01</a>",
                             "<a><![CDATA[</a>", "<a>]]></a>", "</a>", "<a b=1/>"}) {
        EXPECT_TRUE(objectionTo(text).startsWith(u"400 The XML is not well-formed at line 1"))
            << text << ": " << objectionTo(text).toStdString();
    }
}

TEST(Xml, withADocumentTypeIsRejected)
{
    EXPECT_EQ(objectionTo("<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>"),
              u"400 The XML has a document type declaration, which is not accepted"_s);
}

TEST(Xml, deeperThanTheLimitIsRejected)
{
    EXPECT_EQ(objectionTo(nested(64)), QString());
    EXPECT_EQ(objectionTo(nested(65)), u"400 The XML is nested deeper than 64 levels"_s);
    EXPECT_EQ(objectionTo(QByteArray("<a>").repeated(3'000'000)),
              u"400 The XML is nested deeper than 64 levels"_s);
}

TEST(Xml, withTooManyAttributesIsRejected)
{
    QByteArray attributes;
    for (int i = 0; i < 64; ++i) {
        attributes += " a" + QByteArray::number(i) + "='x=\">'";
    }
    EXPECT_EQ(objectionTo("<a" + attributes + "/>"), QString());
    EXPECT_EQ(objectionTo("<a" + attributes + " b=''/>"),
              u"400 The XML has more than 64 attributes on one element"_s);
}

TEST(Xml, withTooManyElementsIsRejected)
{
    EXPECT_EQ(objectionTo("<a>" + QByteArray("<b/>").repeated(500'000) + "</a>"),
              u"400 The XML has more than 500000 elements"_s);
}

TEST(Xml, withTooManyDifferentNamesIsRejected)
{
    const QString reason = u"400 The XML has more than 10000 different names"_s;
    QByteArray elements;
    QByteArray attributes;
    for (int i = 0; i < 9'900; ++i) {
        elements += "<b" + QByteArray::number(i) + "/>";
        attributes += "<b c" + QByteArray::number(i) + "=''/>";
    }
    EXPECT_EQ(objectionTo("<a>" + elements + "</a>"), QString());
    EXPECT_EQ(objectionTo("<a>" + attributes + "</a>"), QString());
    EXPECT_EQ(objectionTo("<a>" + elements + attributes + "</a>"), reason);
}

TEST(Xml, keepsNoPartOfWhatItDoesNotUse)
{
    const QByteArray many = QByteArray("<!-- x --><?x y?>").repeated(3);
    const Document read = readXml("<a x='1'>" + many + "<b>1" + many + "2<![CDATA[3]]></b></a>");
    EXPECT_EQ(writeXml(read.root()), "<a>\n <b>123</b>\n</a>\n");
    int nodes = 0;
    for (const xmlNode* at = read.root().handle()->children; at != nullptr; at = at->next) {
        ++nodes;
    }
    EXPECT_EQ(nodes, 1);
    EXPECT_EQ(read.root().handle()->properties, nullptr);
}

TEST(Xml, hasNamesAsTheyAreWritten)
{
    const QByteArray text = "<x:a xmlns:x='urn:x'><x:b>1</x:b><y:c>2</y:c></x:a>";
    EXPECT_EQ(writeXml(readXml(text).root()), "<x:a>\n <x:b>1</x:b>\n <y:c>2</y:c>\n</x:a>\n");
}

TEST(Xml, withATextLongerThanTheParserTakesIsRejectedInPlainWords)
{
    const QString reason = objectionTo("<a>" + QByteArray(11'000'000, 'x') + "</a>");
    EXPECT_TRUE(reason.endsWith(u": A piece of text is longer than 10,000,000 bytes."_s))
        << reason.toStdString();
}

TEST(Xml, thatIsNotWellFormedIsRejectedInOneShortLine)
{
    EXPECT_EQ(objectionTo("<a>\n <b></c>\n</a>"),
              u"400 The XML is not well-formed at line 2, column 8: Opening and ending tag "
              "mismatch: b line 2 and c"_s);
    EXPECT_EQ(objectionTo("<a>\n <b>"),
              u"400 The XML is not well-formed at line 2, column 4: Premature end of document."_s);
    const QString name(45'000, u'n');
    const QString reason = objectionTo("<a>&" + name.toUtf8() + ";</a>");
    EXPECT_LT(reason.size(), 300);
    EXPECT_TRUE(reason.contains(u"Entity 'nnn"_s)) << reason.toStdString();
}

TEST(XmlGuard, overlooksMarkupInCommentsTextAndInstructions)
{
    EXPECT_EQ(xmlObjection(u"<a><!-- <!DOCTYPE x> <b><b> --><![CDATA[<!DOCTYPE x><c><c>]]>"
                           "<?p <!DOCTYPE x>?></a>"),
              std::nullopt);
}

TEST(XmlGuard, endsOnCutMarkup)
{
    for (const char16_t* text :
         {u"<", u"<a", u"<a '", u"<!--", u"<![CDATA[", u"<?", u"</", u"<a/"}) {
        EXPECT_EQ(xmlObjection(text), std::nullopt) << QStringView(text).toString().toStdString();
    }
}

TEST(XmlDigest, isTheSameForTheSameTreeOnly)
{
    EXPECT_EQ(xmlDigest(readXml("<a><b>1</b></a>").root()),
              xmlDigest(readXml("<a>\n <b>1</b>\n</a>").root()));
    EXPECT_NE(xmlDigest(readXml("<a><b>1</b></a>").root()),
              xmlDigest(readXml("<a><b>2</b></a>").root()));
}

TEST(Xml, keepsCarriageReturns)
{
    const QByteArray text = "<a>x&#13;y</a>\n";
    EXPECT_EQ(writeXml(readXml(text).root()), text);
}

} // namespace
} // namespace simulator
