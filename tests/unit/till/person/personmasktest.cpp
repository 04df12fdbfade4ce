// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/person/personmask.h"

#include "till/person/cardspelling.h"
#include "till/person/personincheck.h"

#include <QStringEncoder>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using till::PersonMask;
namespace cardspelling = till::cardspelling;

namespace {

PersonMask maskOfAnna()
{
    return PersonMask({{u"2200000000017"_s}, {u"Анна Ёлкина-Соколова"_s}});
}

QString maskedText(const QString& text)
{
    return maskOfAnna().masked(text);
}

} // namespace

TEST(CardSpelling, isTakenBackToThePlainNumber)
{
    for (const QString& written :
         {u"2200000000017"_s, u" 2200 0000 0001 7 "_s, u"2200-0000-0001-7"_s,
          u";2200000000017=25121010000012300000?"_s, u"%B2200000000017^SOKOLOVA/ANNA^2512?"_s}) {
        EXPECT_EQ(cardspelling::plain(written), u"2200000000017"_s) << qPrintable(written);
    }
    EXPECT_EQ(cardspelling::plain(u"gold-17a"_s), u"GOLD17A"_s);
    EXPECT_EQ(cardspelling::plain(u"  "_s), QString());
}

TEST(PersonMask, findsEverySpellingOfACard)
{
    EXPECT_EQ(maskedText(u"2200000000017"_s), u"****0017"_s);
    EXPECT_EQ(maskedText(u"card 2200 0000 0001 7, 2200-0000-0001-7."_s),
              u"card ****0017, ****0017."_s);
    EXPECT_EQ(maskedText(u";2200000000017=25121010000012300000? ok"_s), u";****0017 ok"_s);
    EXPECT_EQ(maskedText(u"%B2200000000017^SOKOLOVA/ANNA^25121010000?"_s), u"%B****0017"_s);
    EXPECT_EQ(maskedText(u"0002200000000017"_s), u"****0017"_s);
    EXPECT_EQ(maskedText(u"card=2200000000017&x"_s), u"card=****0017&x"_s);
}

TEST(PersonMask, leavesOtherNumbersAlone)
{
    for (const QString& text : {u"12200000000017"_s, u"22000000000170"_s, u"2200000000024"_s,
                                u"a2200000000017"_s, u"220000000001"_s, QString()}) {
        EXPECT_EQ(maskedText(text), text);
    }
}

TEST(PersonMask, findsNamesInWhateverCaseAndAloneOnly)
{
    EXPECT_EQ(maskedText(u"Здравствуйте, Анна!"_s), u"Здравствуйте, ***!"_s);
    EXPECT_EQ(maskedText(u"АННА ЕЛКИНА, соколова"_s), u"*** ***, ***"_s);
    EXPECT_EQ(maskedText(u"Марианна, Аннабель, Анна2"_s), u"Марианна, Аннабель, Анна2"_s);
    const QString decomposed = u"Ёлкина"_s.normalized(QString::NormalizationForm_D);
    ASSERT_NE(decomposed, u"Ёлкина"_s);
    EXPECT_EQ(maskedText(decomposed), u"***"_s);
}

TEST(PersonMask, looksBetweenTagsAndNeverAtThem)
{
    const PersonMask mask({{u"2200000000017"_s}, {u"name Total"_s}});
    EXPECT_EQ(mask.masked(u"<name><total>Total</total><card>2200000000017</card></name>"_s),
              u"<name><total>***</total><card>****0017</card></name>"_s);
    EXPECT_EQ(mask.masked(u"<a name=\"Total\" n='2200000000017'/>"_s),
              u"<a name=\"***\" n='****0017'/>"_s);
    EXPECT_EQ(mask.masked(u"<a><![CDATA[<Total> & 2200 0000 0001 7]]><!-- Total --></a>"_s),
              u"<a><![CDATA[<***> & ****0017]]><!-- *** --></a>"_s);
    EXPECT_EQ(mask.masked(u"<a>&#x54;otal &amp; 1 &lt; &#50;200000000017</a>"_s),
              u"<a>*** &amp; 1 &lt; ****0017</a>"_s);
    EXPECT_EQ(mask.masked(u"<a>5 &lt; 6 &#1040;</a>"_s), u"<a>5 &lt; 6 &#1040;</a>"_s)
        << "what holds nobody stays byte for byte";
}

TEST(PersonMask, keepsTheEncodingOfBytes)
{
    const PersonMask mask({{u"2200000000017"_s}, {u"Jörg"_s}});
    const QByteArray head = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><n>";
    EXPECT_EQ(mask.masked(QByteArray(head + "J\xf6rg und B\xf6rge</n>")),
              head + "*** und B\xf6rge</n>");
    QStringEncoder wide(QStringConverter::Utf16BE, QStringConverter::Flag::WriteBom);
    QStringEncoder same(QStringConverter::Utf16BE, QStringConverter::Flag::WriteBom);
    const QByteArray bytes = wide(u"<n>Jörg</n>"_s);
    EXPECT_EQ(mask.masked(bytes), QByteArray(same(u"<n>***</n>"_s)));
    const QByteArray broken("\xff\xfe\x01 no text");
    EXPECT_EQ(mask.masked(broken), broken);
}

TEST(PersonMask, keepsTheKeysAndTypesOfValues)
{
    const QVariantMap map{{u"Анна"_s, QVariantList{u"Анна"_s, 17, 2.5}},
                          {u"card"_s, u"2200000000017"_s}};
    const QVariantMap expected{{u"Анна"_s, QVariantList{u"***"_s, 17, 2.5}},
                               {u"card"_s, u"****0017"_s}};
    EXPECT_EQ(maskOfAnna().masked(QVariant(map)).toMap(), expected);
}

TEST(PersonMask, leavesAsManyBytesInALog)
{
    const QByteArray line = u"Анна Ёлкина-Соколова 2200 0000 0001 7; Анна Орлова\n"_s.toUtf8();
    const QByteArray masked = maskOfAnna().maskedInPlace(line);
    EXPECT_EQ(masked.size(), line.size());
    EXPECT_TRUE(masked.endsWith(u"; Анна Орлова\n"_s.toUtf8())) << "a first name is everybody's";
    EXPECT_FALSE(masked.contains(u"Соколова"_s.toUtf8()));
    EXPECT_FALSE(masked.contains("0001"));
    EXPECT_EQ(maskOfAnna().maskedInPlace("\xff\xfe 2200000000017"),
              QByteArray("\xff\xfe *************"));
}

TEST(PersonMask, takesAShortNumberOnlyWhereItStandsAlone)
{
    const PersonMask mask({{u"17"_s}, {}});
    EXPECT_EQ(mask.masked(u"17"_s), u"****17"_s);
    EXPECT_EQ(mask.masked(u"17.00 of 17"_s), u"17.00 of 17"_s);
    EXPECT_FALSE(mask.hasCard(u"17.00"_s));
}

TEST(NamesInMarkup, areThoseOfTheClientAndNotOfTheGoods)
{
    const QString answer =
        u"<RawCheck><client><RawCheckClient><name>Анна</name><surname>О&apos;Брайен"
        "</surname><phone>+7 900 1</phone><account><balance>5</balance></account>"
        "</RawCheckClient></client><items><RawItem><name>Чай</name></RawItem>"
        "</items></RawCheck>"_s;
    EXPECT_EQ(till::namesInMarkup(answer),
              (QSet<QString>{u"Анна"_s, u"О'Брайен"_s, u"+7 900 1"_s}));
}
