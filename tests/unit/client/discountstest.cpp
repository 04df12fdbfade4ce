// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "tests/support/mocked.h"
#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/steps.h"

using namespace Qt::StringLiterals;
using ::testing::Return;
using ::testing::StrictMock;

namespace {

QDateTime firstDiscountsTime()
{
    return QDateTime(QDate(2024, 3, 5), QTime(14, 20, 31));
}

QDateTime secondDiscountsTime()
{
    return firstDiscountsTime().addMSecs(1);
}

class Discounts : public ::testing::Test
{
protected:
    QList<QSharedPointer<DocumentImpact>> read(const QString& lines)
    {
        const QDomDocument answer = tests::parse(u"<a><items>"_s + lines + u"</items></a>"_s);
        return client.getDiscountImpacts(record, answer.documentElement());
    }
    static QString line(const QString& id, const QString& awards)
    {
        return u"<RawItem><id>"_s + id + u"</id><awards><RawItemAwards>"_s + awards +
               u"</RawItemAwards></awards></RawItem>"_s;
    }
    /// Every impact as "position: name sum".
    QStringList described(const QString& lines)
    {
        QStringList texts;
        for (const auto& impact : read(lines)) {
            const auto totals = impact->getTotals();
            texts.append(QString::number(totals->getPosition()) + u": "_s +
                         totals->getDiscountName() + u' ' +
                         QString::number(totals->getDiscountSum()));
        }
        return texts;
    }

    QSharedPointer<DocumentCardRecord> record = tests::cardRecord(u"77"_s, 15, 4);
    orva::Interface client;
};

} // namespace

TEST_F(Discounts, fillEveryFieldOfTheOrdinaryDiscount)
{
    StrictMock<tests::MockCurrentTime> clock;
    const tests::Registered<CurrentTime> registration(clock);
    EXPECT_CALL(clock, currentDateTime()).WillOnce(Return(firstDiscountsTime()));
    const auto impacts = read(line(u"4"_s, u"<discount>15.505</discount>"_s));
    ASSERT_EQ(impacts.size(), 1);
    EXPECT_FALSE(impacts.first().dynamicCast<DiscountImpact>().isNull());
    const auto detail = impacts.first()->getTotals();
    EXPECT_EQ(detail->getCardRecord(), record);
    EXPECT_EQ(detail->getDateTime(), firstDiscountsTime());
    EXPECT_EQ(static_cast<int>(detail->getDiscountType()), 2);
    EXPECT_EQ(static_cast<int>(detail->getDiscountMode()), 2);
    EXPECT_EQ(detail->getDiscountName(), u"Скидка Orva"_s);
    EXPECT_EQ(static_cast<int>(detail->getDiscountObject()), 1);
    EXPECT_EQ(detail->getPosition(), 4);
    EXPECT_EQ(detail->getDiscountSum(), 15.505);
    EXPECT_EQ(static_cast<int>(detail->getImpactSource()), 2);
    EXPECT_TRUE(detail->isMinPriceIgnored());
}

TEST_F(Discounts, fillEveryFieldOfTheDiscountOnTheChange)
{
    StrictMock<tests::MockCurrentTime> clock;
    const tests::Registered<CurrentTime> registration(clock);
    EXPECT_CALL(clock, currentDateTime()).WillOnce(Return(firstDiscountsTime()));
    const auto impacts = read(line(u"4"_s, u"<discountOnChange>0.3</discountOnChange>"_s));
    ASSERT_EQ(impacts.size(), 1);
    EXPECT_FALSE(impacts.first().dynamicCast<DiscountImpact>().isNull());
    const auto detail = impacts.first()->getTotals();
    EXPECT_EQ(detail->getCardRecord(), record);
    EXPECT_EQ(detail->getDateTime(), firstDiscountsTime());
    EXPECT_EQ(static_cast<int>(detail->getDiscountType()), 2);
    EXPECT_EQ(static_cast<int>(detail->getDiscountMode()), 2);
    EXPECT_EQ(detail->getDiscountName(), u"Скидка на мелочь Orva"_s);
    EXPECT_EQ(static_cast<int>(detail->getDiscountObject()), 1);
    EXPECT_EQ(detail->getPosition(), 4);
    EXPECT_EQ(detail->getDiscountSum(), 0.3);
    EXPECT_EQ(static_cast<int>(detail->getImpactSource()), 2);
    EXPECT_TRUE(detail->isMinPriceIgnored());
}

TEST_F(Discounts, setNeitherCardIndexNorRateNorAmountsForPositions)
{
    const auto impacts =
        read(line(u"4"_s, u"<discount>1</discount><discountOnChange>1</discountOnChange>"_s));
    ASSERT_EQ(impacts.size(), 2);
    for (const auto& impact : impacts) {
        EXPECT_TRUE(impact->getTotals()->getCardIndex().isNull());
        EXPECT_TRUE(impact->getTotals()->getDiscountRate().isNull());
        EXPECT_TRUE(impact->getPositionSums().isEmpty());
    }
}

TEST_F(Discounts, takeTheTimeAnewForEveryOneAndForNoOther)
{
    StrictMock<tests::MockCurrentTime> clock;
    const tests::Registered<CurrentTime> registration(clock);
    EXPECT_CALL(clock, currentDateTime())
        .WillOnce(Return(firstDiscountsTime()))
        .WillOnce(Return(secondDiscountsTime()));
    const auto impacts =
        read(line(u"1"_s, u"<discount>0.005</discount>"_s) +
             line(u"2"_s, u"<discountOnChange>1</discountOnChange><discount>2</discount>"_s));
    ASSERT_EQ(impacts.size(), 2);
    EXPECT_EQ(impacts.at(0)->getTotals()->getDateTime(), firstDiscountsTime());
    EXPECT_EQ(impacts.at(1)->getTotals()->getDateTime(), secondDiscountsTime());
}

TEST_F(Discounts, areNoneInAnAnswerWithoutItems)
{
    for (const QString& xml : {u"<a/>"_s, u"<a><items/></a>"_s}) {
        const QDomDocument answer = tests::parse(xml);
        EXPECT_TRUE(client.getDiscountImpacts(record, answer.documentElement()).isEmpty());
    }
    EXPECT_TRUE(client.getDiscountImpacts(record, QDomElement()).isEmpty());
}

TEST_F(Discounts, areDroppedUpToHalfAKopeckAndNotRoundedAbove)
{
    for (const QString& amount : {u"0.005"_s, u"0.004"_s, u"0"_s, u"-10"_s, u"-0.0051"_s, u""_s,
                                  u"12,5"_s, u"много"_s, u"nan"_s}) {
        EXPECT_EQ(described(line(u"1"_s, u"<discount>"_s + amount + u"</discount>"_s)),
                  QStringList())
            << qPrintable(amount);
        EXPECT_EQ(
            described(line(u"1"_s, u"<discountOnChange>"_s + amount + u"</discountOnChange>"_s)),
            QStringList())
            << qPrintable(amount);
    }
    EXPECT_EQ(described(line(u"1"_s, u"<discount>0.0051</discount>"_s)),
              QStringList{u"1: Скидка Orva 0.0051"_s});
    EXPECT_EQ(described(line(u"1"_s, u"<discountOnChange>0.0051</discountOnChange>"_s)),
              QStringList{u"1: Скидка на мелочь Orva 0.0051"_s});
}

TEST_F(Discounts, standLineByLineTheOrdinaryOneBeforeTheOneOnTheChange)
{
    EXPECT_EQ(
        described(
            line(u"7"_s, u"<discountOnChange>0.3</discountOnChange><discount>15.5</discount>"_s) +
            line(u"2"_s, u"<discount>4</discount>"_s) +
            line(u"5"_s, u"<discountOnChange>0.5</discountOnChange>"_s)),
        (QStringList{u"7: Скидка Orva 15.5"_s, u"7: Скидка на мелочь Orva 0.3"_s,
                     u"2: Скидка Orva 4"_s, u"5: Скидка на мелочь Orva 0.5"_s}));
}

TEST_F(Discounts, ofTwoLinesWithOnePositionAreNotMerged)
{
    EXPECT_EQ(described(line(u"1"_s, u"<discount>1</discount>"_s) +
                        line(u"1"_s, u"<discount>2</discount>"_s)),
              (QStringList{u"1: Скидка Orva 1"_s, u"1: Скидка Orva 2"_s}));
}

TEST_F(Discounts, goToPositionZeroWithoutAReadableId)
{
    for (const QString& id :
         {u"x"_s, u""_s, u"1.0"_s, u"2147483648"_s, u"-2147483649"_s, u"99999999999999999999"_s}) {
        EXPECT_EQ(described(line(id, u"<discount>1</discount>"_s)),
                  QStringList{u"0: Скидка Orva 1"_s})
            << qPrintable(id);
    }
    EXPECT_EQ(described(u"<RawItem><awards><RawItemAwards><discount>1</discount></RawItemAwards>"
                        "</awards></RawItem>"_s),
              QStringList{u"0: Скидка Orva 1"_s});
}

TEST_F(Discounts, keepThePositionsAtTheEndsOfTheRange)
{
    EXPECT_EQ(described(line(u"2147483647"_s, u"<discount>1</discount>"_s) +
                        line(u"-2147483648"_s, u"<discount>1</discount>"_s) +
                        line(u" 12 "_s, u"<discount>1</discount>"_s)),
              (QStringList{u"2147483647: Скидка Orva 1"_s, u"-2147483648: Скидка Orva 1"_s,
                           u"12: Скидка Orva 1"_s}));
}

TEST_F(Discounts, areReadFromTheFirstAwardsOnly)
{
    EXPECT_EQ(described(u"<RawItem><id>1</id><awards><RawItemAwards/><RawItemAwards><discount>5"
                        "</discount></RawItemAwards></awards></RawItem>"_s),
              QStringList());
    EXPECT_EQ(described(u"<RawItem><id>1</id><awards><RawItemAwards><discount>5</discount>"
                        "<discount>6</discount></RawItemAwards><RawItemAwards><discount>7"
                        "</discount></RawItemAwards></awards></RawItem>"_s),
              QStringList{u"1: Скидка Orva 5"_s});
}
