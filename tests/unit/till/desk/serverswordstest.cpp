// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/serverswords.h"

#include "host/http/refusallistener.h"
#include "tests/unit/till/tilltest.h"
#include "till/screen/checkview.h"

#include <QStringEncoder>

using namespace Qt::StringLiterals;
using poshost::RefusalListener;
using till::serverswords::lineOf;

namespace {

class ServersWordsTest : public tests::TillTest
{
protected:
    /// Lets the server refuse with that body while the loyalty system asks it.
    void refuseWith(const QByteArray& body)
    {
        loyalty->knowsCard = false;
        loyalty->onAsk = [body] { RefusalListener::hear(424, body, u"text/plain"_s); };
    }
};

} // namespace

TEST(ServersWords, ofPlainTextAreItsOneLine)
{
    EXPECT_EQ(lineOf("The card *0042 is unknown", {}), u"The card *0042 is unknown"_s);
    EXPECT_EQ(lineOf(" one\r\n\r\n  two\tthree\n", {}), u"one two three"_s);
    EXPECT_EQ(lineOf("red \x1b[31m, bell \x07, 1 < 2 & so on", {}),
              u"red \\u001b[31m, bell \\u0007, 1 < 2 & so on"_s);
    EXPECT_EQ(lineOf("turned \xe2\x80\xae around", {}), u"turned \\u202e around"_s);
    EXPECT_EQ(lineOf("", {}), QString());
    EXPECT_EQ(lineOf(" \n ", {}), QString());
}

TEST(ServersWords, ofPagesAndDocumentsAreTheirText)
{
    EXPECT_EQ(
        lineOf("<!DOCTYPE html><html><head><style>p { color: red }</style><script>alert('<p>')"
               "</script></head>\n<body><!-- secret --><h1>Bad&nbsp;gateway</h1><p>5 &lt; "
               "6 &#1040;&#x411;</p></body></html>",
               u"text/html"_s),
        u"Bad gateway 5 < 6 АБ"_s);
    EXPECT_EQ(lineOf("<?xml version=\"1.0\"?><error><code>17</code><text>No such "
                     "card</text></error>",
                     {}),
              u"17 No such card"_s);
    EXPECT_EQ(lineOf("<html><body>cut <b", {}), u"cut"_s);
}

TEST(ServersWords, areReadInTheEncodingThatIsNamed)
{
    EXPECT_EQ(lineOf("J\xf6rg", u"text/plain; charset=\"iso-8859-1\""_s), u"Jörg"_s);
    EXPECT_EQ(lineOf("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><e>J\xf6rg</e>", {}),
              u"Jörg"_s);
    EXPECT_EQ(lineOf("<html><meta charset=\"iso-8859-1\"><p>J\xf6rg", {}), u"Jörg"_s);
    const QString words = u"Карта неизвестна"_s;
    QStringEncoder wide(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    EXPECT_EQ(lineOf(wide(words), {}), words);
    EXPECT_EQ(lineOf(words.toUtf8(), u"text/plain; charset=no-such-thing"_s), words);
    QStringEncoder windows("windows-1251");
    if (windows.isValid()) { // Qt without ICU does not know it
        EXPECT_EQ(lineOf(windows(words), u"text/plain; charset=windows-1251"_s), words);
    }
    EXPECT_EQ(lineOf("\xd0 of no encoding", {}), u"\uFFFD of no encoding"_s);
}

TEST(ServersWords, haveThreeHundredCharactersAtMostAndNoneOfThemHalf)
{
    EXPECT_EQ(lineOf(QByteArray(300, 'x'), {}), QString(300, u'x'));
    EXPECT_EQ(lineOf(QByteArray(301, 'x'), {}), QString(299, u'x') + u'…');
    const QString smile = QString::fromUcs4(U"\U0001F600", 1);
    const QString line = lineOf((QString(298, u'x') + smile.repeated(9)).toUtf8(), {});
    EXPECT_EQ(line, QString(298, u'x') + u'…');
    // a code takes six characters where one was
    EXPECT_EQ(lineOf(QByteArray(300, '\x07'), {}), QString(u"\\u0007"_s).repeated(49) + u"\\…"_s);
}

TEST(ServersWords, doNotGiveTheWholeCardAway)
{
    const RefusalListener heard;
    RefusalListener::hear(424, "Card 2200000000017 is unknown, 4 of 17", {});
    EXPECT_EQ(lineOf(heard, u"2200000000017"_s), u"Card ****0017 is unknown, 4 of 17"_s);
    EXPECT_EQ(lineOf(heard, u"17"_s), u"Card 2200000000017 is unknown, 4 of 17"_s);
    const QByteArray before = QByteArray("so it is, ").repeated(29); // 290 characters
    RefusalListener::hear(424, before + "2200000000017 of Anna", {});
    EXPECT_EQ(lineOf(heard, u"2200000000017"_s), QString::fromLatin1(before) + u"****…"_s);
    RefusalListener::hear(424, before + "2200000000024 of Anna", {}); // another's
    EXPECT_EQ(lineOf(heard, u"2200000000017"_s), QString::fromLatin1(before) + u'…');
}

TEST_F(ServersWordsTest, standBesideThePluginsSentence)
{
    refuseWith("The card *0042 is\nunknown");
    desk->openSale(twoLines());
    EXPECT_FALSE(desk->presentCard(u"1234567890042"_s));
    EXPECT_EQ(desk->takeNotices(),
              (QStringList{u"The sale goes on without the loyalty system (Карта неизвестна)."_s,
                           u"The server says: The card *0042 is unknown"_s}));
    EXPECT_EQ(desk->current().refusal, u"Карта неизвестна"_s);
    const QString shown = till::checkview::forCashier(desk->current(), 0);
    EXPECT_TRUE(shown.contains(u"Without the loyalty system: Карта неизвестна\n"
                               "The server says: The card *0042 is unknown\n"_s))
        << qPrintable(shown);
    EXPECT_FALSE(till::checkview::slip(desk->current()).contains(u"*0042"_s))
        << "the customer's slip is no place for it";
}

TEST_F(ServersWordsTest, areForgottenWithTheRefusal)
{
    refuseWith("The card *0042 is unknown");
    desk->openSale(twoLines());
    EXPECT_FALSE(desk->presentCard(u"1234567890042"_s));
    desk->takeNotices();
    loyalty->knowsCard = true;
    loyalty->onAsk = {};
    EXPECT_TRUE(desk->presentCard(u"2200000000017"_s));
    EXPECT_EQ(desk->current().serversWords, QString());
    EXPECT_EQ(desk->takeNotices(), QStringList());
}

TEST_F(ServersWordsTest, areNotMadeUpWhereTheServerWasSilent)
{
    loyalty->knowsCard = false;
    desk->openSale(twoLines());
    EXPECT_FALSE(desk->presentCard(u"1"_s));
    EXPECT_EQ(desk->takeNotices().size(), 1);
    EXPECT_FALSE(till::checkview::forCashier(desk->current(), 0).contains(u"server says"_s));
}
