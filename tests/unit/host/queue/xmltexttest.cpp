// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/xmltext.h"

#include <QStringDecoder>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// What becomes of a declaration in front of a document.
QByteArray declared(const QByteArray& declaration)
{
    const QByteArray document = "\n<a encoding='KOI8-R'>Анна</a>";
    const QByteArray result = poshost::xmltext::declaredAsUtf8(declaration + document);
    EXPECT_TRUE(result.endsWith(document)) << result.toStdString();
    return result.chopped(document.size());
}

TEST(XmlText, NamesUtf8WhereAnotherEncodingWasDeclared)
{
    EXPECT_EQ(declared("<?xml version='1.0' encoding='windows-1251'?>"),
              "<?xml version='1.0' encoding='UTF-8'?>");
    EXPECT_EQ(declared("<?xml version=\"1.0\" encoding=\"UTF-16\" standalone=\"yes\"?>"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>");
    EXPECT_EQ(declared("<?xml\tversion = '1.0'\r\n encoding\n=\t\"KOI8-R\" ?>"),
              "<?xml\tversion = '1.0'\r\n encoding\n=\t\"UTF-8\" ?>");
    EXPECT_EQ(declared("<?xml version='1.0'encoding='x'standalone='no'?>"),
              "<?xml version='1.0'encoding='UTF-8'standalone='no'?>");
    EXPECT_EQ(declared("<?xml encoding='utf8'?>"), "<?xml encoding='UTF-8'?>")
        << "that name is nobody's";
}

TEST(XmlText, LeavesMarkAndBlanksBeforeTheDeclaration)
{
    EXPECT_EQ(declared("\xef\xbb\xbf<?xml version='1.0' encoding='UTF-16'?>"),
              "\xef\xbb\xbf<?xml version='1.0' encoding='UTF-8'?>");
    EXPECT_EQ(declared(" \r\n\t<?xml version='1.0' encoding='UTF-16'?>"),
              " \r\n\t<?xml version='1.0' encoding='UTF-8'?>");
}

TEST(XmlText, LeavesEverythingElseAsItIs)
{
    for (const QByteArray text : {"",
                                  "<?xml version='1.0'?>",
                                  "<?xml version='1.0' standalone='yes'?>",
                                  "<?xml version='1.0' encoding='UTF-8'?>",
                                  "<?xml version='1.0' encoding=\"utf-8\"?>",
                                  "<?xml version='1.0' encoding=''?>",
                                  "<?xml version='1.0' encoding=KOI8-R?>",
                                  "<?xml version='1.0' encoding='KOI8-R?>",
                                  "<?xml version='1.0' encoding?>",
                                  "<?xml version='1.0' encoding=?>",
                                  "<?xml version=\" encoding='KOI8-R' \"?>",
                                  "<?xml version='1.0' encodings='KOI8-R'?>",
                                  "<?xml-stylesheet encoding='KOI8-R'?>",
                                  "<?xmlencoding='KOI8-R'?>",
                                  "<?XML encoding='KOI8-R'?>",
                                  "<?xml?>",
                                  "<?xml",
                                  "<?xml encoding='KOI8-R'",
                                  "<!-- <?xml encoding='KOI8-R'?> -->",
                                  "{\"encoding\":\"<?xml encoding='KOI8-R'?>\"}",
                                  "encoding='KOI8-R'",
                                  "\xef\xbb\xbf",
                                  " \n "}) {
        EXPECT_EQ(poshost::xmltext::declaredAsUtf8(text), text);
    }
    EXPECT_EQ(declared("<?xml version='1.0'?><?xml encoding='KOI8-R'?>"),
              "<?xml version='1.0'?><?xml encoding='KOI8-R'?>");
}

TEST(XmlText, IsShownInTheEncodingThatItNames)
{
    EXPECT_EQ(poshost::xmltext::decoded("<a>Анна</a>"), u"<a>Анна</a>"_s);
    EXPECT_EQ(poshost::xmltext::decoded("<?xml version='1.0' encoding='no-such'?><a>Анна</a>"),
              u"<?xml version='1.0' encoding='no-such'?><a>Анна</a>"_s);
    EXPECT_EQ(
        poshost::xmltext::decoded("<?xml version='1.0' encoding='ISO-8859-1'?><a>J\xF6rg</a>"),
        u"<?xml version='1.0' encoding='ISO-8859-1'?><a>Jörg</a>"_s);
    if (QStringDecoder("windows-1251").isValid()) { // Qt without ICU does not know it
        EXPECT_EQ(poshost::xmltext::decoded("<?xml encoding='windows-1251'?>\xC0\xED\xED\xE0"),
                  u"<?xml encoding='windows-1251'?>Анна"_s);
    }
    for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
        for (const auto flag :
             {QStringConverter::Flag::Default, QStringConverter::Flag::WriteBom}) {
            QStringEncoder encoder(encoding, flag);
            const QByteArray bytes = encoder(u"<?xml encoding='UTF-16'?><a>Анна</a>"_s);
            EXPECT_EQ(poshost::xmltext::decoded(bytes), u"<?xml encoding='UTF-16'?><a>Анна</a>"_s);
        }
    }
    EXPECT_EQ(poshost::xmltext::decoded("<?xml encoding='UTF-16'?><a>Анна</a>"),
              u"<?xml encoding='UTF-16'?><a>Анна</a>"_s)
        << "it is not, or this could not be read";
    EXPECT_EQ(poshost::xmltext::decoded("plain \xFF"), u"plain \uFFFD"_s);
}

TEST(XmlText, IsReadWithTheCharactersThatItRefersTo)
{
    using poshost::xmltext::withoutReferences;
    EXPECT_EQ(withoutReferences(u"&lt;&gt;&amp;&quot;&apos; &#1040;&#x411;&#X431;"_s),
              u"<>&\"' АБб"_s);
    EXPECT_EQ(withoutReferences(u"&amp;lt; & &; &unknown; &#; a&b"_s).section(u' ', 0, 0),
              u"&lt;"_s);
    EXPECT_EQ(withoutReferences(u"& &; &unknown; a&b"_s), u"& &; &unknown; a&b"_s);
    EXPECT_EQ(withoutReferences(u"&#xD800;&#1114112;&#99999999;"_s), u"\uFFFD\uFFFD\uFFFD"_s);
    EXPECT_EQ(withoutReferences(u"&#x1F600;"_s), QString::fromUcs4(U"\U0001F600", 1));
}

TEST(XmlText, LosesTheWordAtWhichItWasCut)
{
    using poshost::xmltext::withoutHalfWord;
    EXPECT_EQ(withoutHalfWord(u"<surname>Соко"_s), u"<surname>"_s);
    EXPECT_EQ(withoutHalfWord(u"Анна Соко\uFFFD"_s), u"Анна "_s);
    EXPECT_EQ(withoutHalfWord(u"<a b=\"&#1057;&#1086;&#10"_s), u"<a b=\""_s);
    EXPECT_EQ(withoutHalfWord(u"card 2200 0000-00"_s), u"card "_s);
    EXPECT_EQ(withoutHalfWord(u"card 2200 0000 "_s), u"card "_s);
    EXPECT_EQ(withoutHalfWord(u"whole <"_s), u"whole <"_s);
    EXPECT_EQ(withoutHalfWord(QString()), QString());
    EXPECT_EQ(withoutHalfWord(u"a "_s + QString(256, u'x')), u"a "_s);
    EXPECT_EQ(withoutHalfWord(u"a "_s + QString(257, u'x')), u"a "_s + QString(257, u'x'));
}

} // namespace
