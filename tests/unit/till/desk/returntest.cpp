// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/statement.h"
#include "tests/unit/till/tilltest.h"
#include "till/checks/amount.h"
#include "till/checks/returnlines.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using tests::refusalOf;
using till::Check;
using till::Line;
using till::LoyaltyState;
using till::PointsChoice;

namespace {

class ReturnTest : public tests::TillTest
{
protected:
    /// Sells with discount, points and accruals on both lines.
    Check sellGranted()
    {
        loyalty->discounts = {{1, 20.01}, {2, 3.0}};
        loyalty->awards = {{1, 9.01}, {2, 1.35}};
        loyalty->spendable = 50;
        loyalty->placed = {{1, 33.33}, {2, 6.67}};
        Check sale = sell(PointsChoice::sum(40'00));
        EXPECT_EQ(desk->takeNotices(), QStringList());
        return sale;
    }
    void markDelivered()
    {
        poshost::Statement(*database,
                           u"UPDATE queue_messages SET state = 'delivered', account_id = NULL"_s)
            .execute();
    }
    Check takeBack(const QString& sale, const QMap<int, qint64>& lines)
    {
        desk->openReturn(returnOf(sale, lines));
        return desk->close();
    }
};

Check soldCheck(const Line& line)
{
    return Check::create(EDocumentType::Sale, 1, {line});
}

} // namespace

TEST_F(ReturnTest, aReturnTakesTheSharesOfTheReturnedPart)
{
    const Check sale = sellGranted();
    ASSERT_EQ(sale.line(1)->earnedKopecks, 7'27); // 9.01 * 166.99 / 206.99 = 7.2688
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const Check& check = desk->current();
    ASSERT_EQ(check.lines.size(), 1);
    const Line& line = check.lines.first();
    EXPECT_EQ(line.thousandths, 2000);
    EXPECT_EQ(line.returnedThousandths, 1000);
    EXPECT_EQ(line.sumKopecks, 100'00);
    EXPECT_EQ(line.discountKopecks, 10'01);  // 10.005
    EXPECT_EQ(line.givenBackKopecks, 16'67); // 16.665
    EXPECT_EQ(line.takenBackKopecks, 3'64);  // 3.635
    EXPECT_EQ(check.moneyKopecks(), 100'00 - 10'01 - 16'67);

    const auto item = check.document->getGoodsItems().first();
    EXPECT_EQ(check.document->getDocumentType(), 25);
    EXPECT_EQ(check.document->getSaleDocumentId(), sale.id());
    EXPECT_DOUBLE_EQ(item->getQuantity(), 2.0);
    EXPECT_DOUBLE_EQ(item->getQuantBack().toDouble(), 1.0);
    EXPECT_DOUBLE_EQ(item->getSumb(), 100.0);
    EXPECT_DOUBLE_EQ(item->getBonusImpactSum(), 16.67);
    EXPECT_DOUBLE_EQ(check.document->getCheckSum(), 100.0);
    EXPECT_TRUE(check.document->getImpacts().isEmpty());
    EXPECT_EQ(check.document->getCardRecord(15)->getNumber().toString(), u"2200000000017"_s);
}

TEST_F(ReturnTest, aReturnIsConfirmedAfterItsSaleAndNotAskedAboutBefore)
{
    const Check sale = sellGranted();
    loyalty->calls.clear();
    desk->openReturn(returnOf(sale.id(), {{2, 500}}));
    EXPECT_FALSE(desk->request());
    EXPECT_EQ(desk->takeNotices(),
              QStringList{u"The server has not got the sale yet, so it is not asked about the "
                          "return; the return is confirmed after the sale."_s});
    const Check closed = desk->close();
    EXPECT_TRUE(closed.confirmed);
    EXPECT_EQ(loyalty->calls, (QStringList{u"commit"_s, u"clear"_s}));
    const auto entries = poshost::OutgoingQueue(*database).list();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries.at(1).waitsFor, entries.at(0).id);
}

TEST_F(ReturnTest, messagesOfOneCardAndAReturnWithItsSaleShareALane)
{
    const auto lanes = [this] {
        QList<qint64> found;
        poshost::Statement rows(*database, u"SELECT lane FROM queue_messages ORDER BY id"_s);
        while (rows.next()) {
            found.append(rows.value(0).toLongLong());
        }
        return found;
    };
    const Check first = sellGranted();
    sellGranted();
    desk->openReturn(returnOf(first.id(), {{1, 1000}}));
    desk->close();
    ASSERT_EQ(lanes().size(), 3);
    EXPECT_NE(lanes().at(0), 0);
    EXPECT_EQ(lanes(), QList<qint64>(3, lanes().first()));

    markDelivered(); // and the sale's own lane may be forgotten by now
    poshost::Statement(*database, u"UPDATE queue_messages SET lane = 0"_s).execute();
    desk->openReturn(returnOf(first.id(), {{2, 500}}));
    desk->close();
    const qint64 ofTheSalesCard = lanes().last();

    desk->openSale(twoLines());
    ASSERT_TRUE(desk->presentCard(u"2200000000017"_s));
    ASSERT_TRUE(desk->request());
    desk->close();
    EXPECT_EQ(lanes().last(), ofTheSalesCard);

    desk->openSale(twoLines());
    ASSERT_TRUE(desk->presentCard(u"2200000000031"_s));
    ASSERT_TRUE(desk->request());
    desk->close();
    EXPECT_NE(lanes().last(), ofTheSalesCard);
}

TEST_F(ReturnTest, aDeliveredSalesReturnIsAskedAbout)
{
    const Check sale = sellGranted();
    markDelivered();
    loyalty->calls.clear();
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    EXPECT_TRUE(desk->request());
    const Check closed = desk->close();
    EXPECT_EQ(loyalty->calls, (QStringList{u"request"_s, u"commit"_s, u"clear"_s}));
    EXPECT_EQ(closed.clientMessages.size(), 1);
    EXPECT_TRUE(closed.document->getImpacts().isEmpty());
    EXPECT_EQ(closed.discountKopecks(), 10'01); // its own share, not a new discount
    EXPECT_EQ(poshost::OutgoingQueue(*database).list().first().waitsFor, 0);
}

TEST_F(ReturnTest, aRequestThatFailsStopsNoReturnAndLeavesItsShares)
{
    const Check sale = sellGranted();
    markDelivered();
    loyalty->answers = false;
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    EXPECT_FALSE(desk->request());
    EXPECT_EQ(desk->takeNotices(),
              QStringList{u"The loyalty system does not answer about the return (Нет связи с "
                          "сервером); it is confirmed all the same."_s});
    const Check closed = desk->close();
    EXPECT_TRUE(closed.confirmed);
    EXPECT_EQ(closed.discountKopecks(), 10'01);
    EXPECT_EQ(closed.givenBackKopecks(), 16'67);
    EXPECT_EQ(payloads().size(), 1);
}

TEST_F(ReturnTest, aReturnOfASaleWithoutLoyaltyQueuesNothing)
{
    loyalty->answers = false;
    desk->openSale(twoLines());
    ASSERT_TRUE(desk->presentCard(u"2200"_s));
    EXPECT_FALSE(desk->request());
    const Check sale = desk->close();
    ASSERT_FALSE(sale.confirmed);
    loyalty->calls.clear();
    const Check closed = takeBack(sale.id(), {{1, 1000}});
    EXPECT_FALSE(closed.confirmed);
    EXPECT_EQ(loyalty->calls, QStringList());
    EXPECT_EQ(messages(), 0);
    EXPECT_EQ(closed.moneyKopecks(), 100'00);
}

TEST_F(ReturnTest, returnsOfAWholeSaleAddUpToTheSale)
{
    const Check sale = sellGranted();
    const Check first = takeBack(sale.id(), {{1, 1000}, {2, 333}});
    const Check second = takeBack(sale.id(), {{1, 1000}});
    const Check third = takeBack(sale.id(), {{2, 167}});
    const auto total = [&](qint64 (Check::*figure)() const) {
        return (first.*figure)() + (second.*figure)() + (third.*figure)();
    };
    EXPECT_EQ(total(&Check::goodsKopecks), sale.goodsKopecks());
    EXPECT_EQ(total(&Check::discountKopecks), sale.discountKopecks());
    EXPECT_EQ(total(&Check::givenBackKopecks), sale.spentKopecks());
    EXPECT_EQ(total(&Check::takenBackKopecks), sale.earnedKopecks());
    EXPECT_EQ(total(&Check::moneyKopecks), sale.moneyKopecks());
}

TEST_F(ReturnTest, noMoreIsReturnedThanWasSold)
{
    const Check sale = sellGranted();
    takeBack(sale.id(), {{1, 1000}});
    EXPECT_EQ(refusalOf([&] {
                  desk->openReturn(returnOf(sale.id(), {{1, 2000}}));
              }),
              u"Position 1: 2 cannot be returned, of 2 sold 1 are left; write a smaller "
              "quantity."_s);
    EXPECT_EQ(refusalOf([&] {
                  desk->openReturn(returnOf(sale.id(), {{1, 500}}));
              }),
              u"Position 1: pieces are returned in whole numbers."_s);
    EXPECT_EQ(refusalOf([&] {
                  desk->openReturn(returnOf(sale.id(), {{3, 1000}}));
              }),
              u"Position 3: the sale has no such line; it has 2."_s);
    EXPECT_FALSE(desk->hasCheck());
}

TEST_F(ReturnTest, aReturnOpenedBesideAnotherOneIsNotClosedAfterIt)
{
    const Check sale = sellGranted();
    tests::FakeLoyalty other;
    till::CashDesk otherDesk(other, store, session);
    desk->openReturn(returnOf(sale.id(), {{1, 2000}}));
    otherDesk.openReturn(returnOf(sale.id(), {{1, 2000}}));
    otherDesk.close();
    EXPECT_EQ(
        refusalOf([&] { desk->close(); }),
        u"Another return of this sale has been closed meanwhile; abandon this one and open it "
        "again."_s);
    EXPECT_EQ(messages(), 2);
}

TEST_F(ReturnTest, aSaleIsFoundByIdentifierNumberOrAsTheLast)
{
    till::CheckFile file = twoLines();
    file.number = 117;
    desk->openSale(file);
    const QString first = desk->close().id();
    const QString second = sell().id();
    EXPECT_EQ(store.findSale(first).id(), first);
    EXPECT_EQ(store.findSale(u"117"_s).id(), first);
    EXPECT_EQ(store.findSale(u"last"_s).id(), second);
    EXPECT_EQ(refusalOf([&] { store.findSale(u"118"_s); }),
              u"There is no closed sale \"118\"; look at the list of checks."_s);
    desk->openSale(file);
    desk->close();
    EXPECT_EQ(refusalOf([&] { store.findSale(u"117"_s); }),
              u"Several sales have the number 117; name the sale by its identifier."_s);
}

TEST_F(ReturnTest, aReturnIsNeitherChangedNorPaid)
{
    const Check sale = sellGranted();
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const QString refusal = u"This is a return; only a sale can be changed or paid."_s;
    EXPECT_EQ(refusalOf([&] { desk->changeQuantity(1, 1000); }), refusal);
    EXPECT_EQ(refusalOf([&] { desk->tender(1); }), refusal);
    EXPECT_EQ(refusalOf([&] { desk->choosePoints(PointsChoice::all()); }), refusal);
    EXPECT_EQ(refusalOf([&] { desk->presentCard(u"1"_s); }), refusal);
}

// Whatever is sold and however it is returned: the parts add up to the line, no part is negative,
// and what has been taken so far is never further than a kopeck from the exact share.
TEST(ReturnLines, anySplitAddsUp)
{
    const quint32 seed = QRandomGenerator::global()->generate();
    RecordProperty("seed", std::to_string(seed));
    QRandomGenerator random(seed);
    for (int round = 0; round < 3000; ++round) {
        Line line;
        line.position = 1;
        line.fractional = true;
        line.thousandths = random.bounded(1, 20000);
        line.sumKopecks = random.bounded(0, 1000000);
        line.discountKopecks = random.bounded(0, int(line.sumKopecks) + 1);
        line.spentKopecks = random.bounded(0, int(line.sumKopecks - line.discountKopecks) + 1);
        line.earnedKopecks = random.bounded(0, int(line.sumKopecks) + 1);
        const Check sale = soldCheck(line);
        QList<Check> returns;
        Line total;
        for (qint64 left = line.thousandths; left > 0;) {
            Line wanted;
            wanted.position = 1;
            wanted.returnedThousandths = random.bounded(1, int(left) + 1);
            left -= wanted.returnedThousandths;
            const QList<Line> lines = till::returnlines::of(sale, returns, {wanted});
            ASSERT_EQ(lines.size(), 1);
            const Line& part = lines.first();
            total.returnedThousandths += part.returnedThousandths;
            for (const auto& [figure, whole] :
                 {std::pair{&Line::sumKopecks, line.sumKopecks},
                  std::pair{&Line::discountKopecks, line.discountKopecks},
                  std::pair{&Line::givenBackKopecks, line.spentKopecks},
                  std::pair{&Line::takenBackKopecks, line.earnedKopecks}}) {
                ASSERT_GE(part.*figure, 0) << "seed " << seed;
                total.*figure += part.*figure;
                const double exact =
                    double(whole) * double(total.returnedThousandths) / double(line.thousandths);
                ASSERT_NEAR(double(total.*figure), exact, 0.5000001) << "seed " << seed;
            }
            returns.append(Check::create(EDocumentType::ReturnBySale, 2, lines));
        }
        ASSERT_EQ(total.sumKopecks, line.sumKopecks) << "seed " << seed;
        ASSERT_EQ(total.discountKopecks, line.discountKopecks) << "seed " << seed;
        ASSERT_EQ(total.givenBackKopecks, line.spentKopecks) << "seed " << seed;
        ASSERT_EQ(total.takenBackKopecks, line.earnedKopecks) << "seed " << seed;
    }
}
