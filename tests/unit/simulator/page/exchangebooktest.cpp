// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The exchanges as they are kept for the page.

#include "simulator/page/exchangebook.h"
#include "tests/unit/simulator/testchecks.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

class ExchangeBookTest : public testing::Test
{
protected:
    static Request request(const QByteArray& body)
    {
        Request made{"POST", "/api/1.x/precheck", "Basic secret", body};
        made.contentType = "application/xml";
        return made;
    }

    static Answer answer(const QByteArray& body)
    {
        Answer made;
        made.body = body;
        made.checkId = u"check \"1\""_s;
        made.cardNumber = u"17"_s;
        return made;
    }

    static QJsonObject object(const QByteArray& row)
    {
        return QJsonDocument::fromJson(row).object();
    }

    static QList<qint64> numbers(const QByteArrayList& rows)
    {
        QList<qint64> list;
        for (const QByteArray& row : rows) {
            list.append(object(row)[u"number"_s].toInteger());
        }
        return list;
    }

    QTemporaryDir folder{QDir::tempPath() + u"/ExchangeBook-XXXXXX"_s};
};

TEST_F(ExchangeBookTest, givesBackWhatItWasGivenWithoutTheAuthorization)
{
    ExchangeBook book(folder.path());
    Answer struck = answer("<RawCheck/>");
    struck.status = 503;
    struck.fault.emplace().kind = FaultKind::CutBody;
    EXPECT_EQ(book.add(request("<a>\0</a>"), struck), 1);
    const auto entry = book.read(1);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->request, QByteArray("<a>\0</a>"));
    EXPECT_EQ(entry->answer, QByteArray("<RawCheck/>"));
    const QJsonObject row = object(entry->row);
    EXPECT_EQ(row[u"number"_s].toInt(), 1);
    EXPECT_EQ(row[u"operation"_s].toString(), u"precheck"_s);
    EXPECT_EQ(row[u"check"_s].toString(), u"check \"1\""_s);
    EXPECT_EQ(row[u"card"_s].toString(), u"17"_s);
    EXPECT_EQ(row[u"status"_s].toInt(), 503);
    EXPECT_EQ(row[u"fault"_s].toString(), u"cut-body"_s);
    EXPECT_EQ(row[u"answerBytes"_s].toInt(), 11);
    EXPECT_FALSE(entry->row.contains("secret"));
}

TEST_F(ExchangeBookTest, namesTheCheckOfARequestThatAFaultLeftUnread)
{
    ExchangeBook book(folder.path());
    Answer lost;
    lost.fault.emplace().kind = FaultKind::RequestLost;
    book.add(request("<RawCheck><id>7</id><cardNumber>22</cardNumber></RawCheck>"), lost);
    const QJsonObject row = object(book.read(1)->row);
    EXPECT_EQ(row[u"check"_s].toString(), u"7"_s);
    EXPECT_EQ(row[u"card"_s].toString(), u"22"_s);
}

TEST_F(ExchangeBookTest, listsRowsBehindANumber)
{
    ExchangeBook book(folder.path());
    EXPECT_EQ(book.span().last, book.span().first - 1);
    EXPECT_TRUE(book.rows(0, 10).isEmpty());
    for (int i = 0; i < 5; ++i) {
        book.add(request("a"), answer("b"));
    }
    EXPECT_EQ(numbers(book.rows(0, 2)), (QList<qint64>{1, 2}));
    EXPECT_EQ(numbers(book.rows(2, 10)), (QList<qint64>{3, 4, 5}));
    EXPECT_TRUE(book.rows(5, 10).isEmpty());
    EXPECT_TRUE(book.rows(99, 10).isEmpty());
    EXPECT_FALSE(book.read(0));
    EXPECT_FALSE(book.read(6));
}

TEST_F(ExchangeBookTest, forgetsTheOldestBeyondItsLimitsAndKeepsTheirNumbers)
{
    ExchangeBook book(folder.path(), {.fileBytes = 2000, .allBytes = 10'000, .exchanges = 1000});
    const QByteArray body(500, 'x');
    for (int i = 0; i < 100; ++i) {
        book.add(request(body), answer(QByteArray::number(i)));
    }
    const ExchangeBook::Span span = book.span();
    EXPECT_EQ(span.last, 100);
    EXPECT_GT(span.first, 80);
    EXPECT_LT(span.first, 98);
    EXPECT_FALSE(book.read(span.first - 1));
    for (qint64 number = span.first; number <= span.last; ++number) {
        ASSERT_TRUE(book.read(number)) << number;
        EXPECT_EQ(book.read(number)->answer, QByteArray::number(number - 1));
    }
    EXPECT_EQ(numbers(book.rows(0, 1)), QList<qint64>{span.first});
    ExchangeBook few(folder.path(),
                     {.fileBytes = 1'000'000, .allBytes = 1'000'000, .exchanges = 3});
    for (int i = 0; i < 10; ++i) {
        few.add(request("a"), answer("b"));
    }
    EXPECT_EQ(few.span().last, 10);
    EXPECT_LE(few.span().last - few.span().first + 1, 3);
}

TEST_F(ExchangeBookTest, leavesNothingInTheFolder)
{
    ExchangeBook book(folder.path());
    book.add(request("a"), answer("b"));
    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files).isEmpty());
}

TEST_F(ExchangeBookTest, goesOnWithoutADiskAndSaysWhatItDoesNotHave)
{
    ExchangeBook book(folder.filePath(u"nowhere"_s));
    EXPECT_EQ(book.add(request("a"), answer("b")), 1);
    EXPECT_EQ(book.add(request("a"), answer("b")), 2);
    EXPECT_EQ(book.span().last, 2);
    EXPECT_FALSE(book.read(2));
    EXPECT_TRUE(book.rows(0, 10).isEmpty());
}

TEST_F(ExchangeBookTest, takesExchangesOfManyThreadsInOneOrder)
{
    ExchangeBook book(folder.path());
    constexpr int each = 200;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&book] {
            for (int i = 0; i < each; ++i) {
                const qint64 number = book.add(request("a"), answer("b"));
                EXPECT_TRUE(book.read(number));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const QList<qint64> all = numbers(book.rows(0, 10'000));
    ASSERT_EQ(all.size(), 4 * each);
    for (qsizetype i = 0; i < all.size(); ++i) {
        EXPECT_EQ(all[i], i + 1);
    }
}

} // namespace
} // namespace simulator::test
