// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/printable.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
namespace printable = console::printable;

namespace {

/// Every code that must not be printed as it is, the line break aside.
QList<char16_t> unsafeCodes()
{
    QList<char16_t> codes{0x061c, 0x200e, 0x200f, 0x2028, 0x2029};
    for (const auto& [first, last] : {std::pair<char16_t, char16_t>{0x00, 0x09},
                                      {0x0b, 0x1f},
                                      {0x7f, 0x9f},
                                      {0x202a, 0x202e},
                                      {0x2066, 0x2069}}) {
        for (char16_t code = first; code <= last; ++code) {
            codes.append(code);
        }
    }
    return codes;
}

QString written(char16_t code)
{
    return u"\\u"_s + QString::number(code, 16).rightJustified(4, u'0');
}

} // namespace

TEST(Printable, showsEveryCodeThatSteersATerminalOrALine)
{
    const QList<char16_t> codes = unsafeCodes();
    ASSERT_EQ(codes.size(), 5 + 10 + 21 + 33 + 5 + 4);
    for (const char16_t code : codes) {
        const QString text = u"a"_s + QChar(code) + u'b';
        EXPECT_EQ(printable::lines(text), code == u'\t' ? u"a b"_s : u"a"_s + written(code) + u'b')
            << int(code);
        const bool isBreak = (code >= 0x0a && code <= 0x0d) || code == 0x85 || code == 0x2028 ||
                             code == 0x2029 || code == u'\t';
        EXPECT_EQ(printable::line(text), isBreak ? u"a b"_s : u"a"_s + written(code) + u'b')
            << int(code);
    }
    EXPECT_EQ(printable::lines(u"a\nb"_s), u"a\nb"_s);
    EXPECT_EQ(printable::lines(u"a\r\nb"_s), u"a\nb"_s);
    EXPECT_EQ(printable::line(u"a\r\n\n\u2028b\n"_s), u"a b "_s);
}

TEST(Printable, leavesEveryOtherTextAsItIs)
{
    const QString text =
        u"Чай «Ассам», 100 г — 49,90 ₽ \\u001b שלום مرحبا 🙂👩‍👧 e\u0301 \u00ad\u200d\ufeff"_s;
    EXPECT_EQ(printable::lines(text), text);
    EXPECT_EQ(printable::line(text), text);
    EXPECT_EQ(printable::lines(QString()), QString());
}

TEST(Printable, keepsTheValueOfJson)
{
    QString all;
    for (const char16_t code : unsafeCodes()) {
        all += QChar(code);
    }
    const QJsonArray value{all + u"\n\"\\"_s};
    for (const auto format : {QJsonDocument::Indented, QJsonDocument::Compact}) {
        const QString shown =
            printable::lines(QString::fromUtf8(QJsonDocument(value).toJson(format)));
        EXPECT_EQ(QJsonDocument::fromJson(shown.toUtf8()).array(), value);
        for (const char16_t code : unsafeCodes()) {
            EXPECT_FALSE(shown.contains(QChar(code))) << int(code);
        }
    }
}

TEST(Printable, wrapsBetweenWordsAndKeepsBreaks)
{
    EXPECT_EQ(printable::wrapped(u"one two three"_s, 7), (QStringList{u"one two"_s, u"three"_s}));
    EXPECT_EQ(printable::wrapped(u"one\n\ntwo\r\nthree\u2028four"_s, 80),
              (QStringList{u"one"_s, QString(), u"two"_s, u"three"_s, u"four"_s}));
    EXPECT_EQ(printable::wrapped(u"abcdefghij kl"_s, 4),
              (QStringList{u"abcd"_s, u"efgh"_s, u"ij"_s, u"kl"_s}));
    EXPECT_EQ(printable::wrapped(u"abc\U0001F642\U0001F642"_s, 4),
              (QStringList{u"abc"_s, u"\U0001F642\U0001F642"_s}));
    EXPECT_EQ(printable::wrapped(u"a\033[2Jb"_s, 80), QStringList{u"a\\u001b[2Jb"_s});
    EXPECT_EQ(printable::wrapped(QString(), 80), QStringList{QString()});
}

TEST(Printable, quotesAValueThatWouldBeSeveral)
{
    EXPECT_EQ(printable::csv(u"sale-1"_s), u"sale-1"_s);
    EXPECT_EQ(printable::csv(u"a,\"b\"\nc"_s), u"\"a,\"\"b\"\" c\""_s);
}

TEST(Folded, goesOnBelowWhatHasNoRoom)
{
    EXPECT_EQ(printable::folded(u"short\none two three\n"_s, 12), u"short\none two\n    three\n"_s);
    EXPECT_EQ(printable::folded(u"fits in 12 c"_s, 12), u"fits in 12 c"_s);
    EXPECT_EQ(printable::folded(QString(), 12), QString());
}
