// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/plugin/orvatest.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

using namespace tests;

class RecalculationTest : public OrvaTest
{
protected:
    /// The amounts of the records that the base holds.
    QList<double> amounts() const
    {
        QList<double> found;
        for (const auto& held : orva.bonusRecords) {
            found.append(held.bonusAmount);
        }
        return found;
    }

    const QStringList calls{u"debug: Пересчет бонусных начислений"_s, u"base.getCheckSum()"_s,
                            u"base.getCheckSum()"_s, u"base.getCardRecord(15)"_s};
};

TEST_F(RecalculationTest, ScalesTheAccrualsToTheDocumentsSum)
{
    base->checkSum = 80;
    orva.pointsForSpend = 20;
    orva.bonusRecords = {bonusRecord(10)};
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_EQ(amounts(), QList<double>{8});
    EXPECT_EQ(orva.pointsForEarn, 8.0);
    EXPECT_EQ(record->getPointsForEarn(), QVariant(8.0));
    EXPECT_EQ(record->getPointsForEarn().typeId(), QMetaType::Double);
    EXPECT_EQ(journal.entries(), calls);
}

TEST_F(RecalculationTest, TheFirstAnswerMakesTheWholeTheSecondThePart)
{
    base->checkSum = {80, 40};
    orva.pointsForSpend = 20;
    orva.bonusRecords = {bonusRecord(10)};
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_EQ(amounts(), QList<double>{10 * (40.0 / 100.0)});
}

TEST_F(RecalculationTest, MultipliesByTheRatio)
{
    // 3 * 20 / 50 would be another double.
    base->checkSum = 20;
    orva.pointsForSpend = 30;
    orva.bonusRecords = {bonusRecord(3)};
    const double ratio = 20.0 / 50.0;
    ASSERT_NE(3 * ratio, 3 * 20.0 / 50.0);
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_EQ(orva.pointsForEarn, 3 * ratio);
}

TEST_F(RecalculationTest, AddsTheAmountsInTheOrderOfTheList)
{
    base->checkSum = 50;
    orva.bonusRecords = {bonusRecord(0.1), bonusRecord(0.2), bonusRecord(0.3)};
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    ASSERT_NE(0.0 + 0.1 + 0.2 + 0.3, 0.3 + 0.2 + 0.1);
    EXPECT_EQ(orva.pointsForEarn, 0.0 + 0.1 + 0.2 + 0.3);
    EXPECT_EQ(amounts(), (QList<double>{0.1, 0.2, 0.3}));
}

TEST_F(RecalculationTest, EachCallGoesOnFromTheLast)
{
    base->checkSum = 80;
    orva.pointsForSpend = 20;
    orva.bonusRecords = {bonusRecord(10)};
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_EQ(amounts(), QList<double>{10 * 0.8 * 0.8});
    EXPECT_EQ(orva.pointsForEarn, 10 * 0.8 * 0.8);
}

TEST_F(RecalculationTest, WithoutRecordsThePointsToEarnAreNone)
{
    base->checkSum = 80;
    orva.pointsForEarn = 5;
    record->setPointsForEarn(5.0);
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_EQ(orva.pointsForEarn, 0.0);
    EXPECT_EQ(record->getPointsForEarn(), QVariant(0.0));
    EXPECT_EQ(record->getPointsForEarn().typeId(), QMetaType::Double);
    EXPECT_EQ(journal.entries(), calls) << "the sum is asked twice all the same";
}

TEST_F(RecalculationTest, NothingToDivideByIsNotSoftened)
{
    const double infinity = std::numeric_limits<double>::infinity();
    base->checkSum = 0;
    orva.pointsForSpend = 0;
    orva.bonusRecords = {bonusRecord(10), bonusRecord(0)};
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_TRUE(std::isnan(amounts().at(0)));
    EXPECT_TRUE(std::isnan(amounts().at(1)));
    EXPECT_TRUE(std::isnan(orva.pointsForEarn));
    EXPECT_TRUE(std::isnan(record->getPointsForEarn().toDouble()));

    base->checkSum = -20;
    orva.pointsForSpend = 20;
    orva.bonusRecords = {bonusRecord(10)};
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_EQ(amounts(), QList<double>{-infinity});
    EXPECT_EQ(record->getPointsForEarn(), QVariant(-infinity));

    base->checkSum = {-20, 5};
    orva.bonusRecords = {bonusRecord(10)};
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_EQ(orva.pointsForEarn, infinity);
}

TEST_F(RecalculationTest, ChangesTheRecordsInPlaceAndOnlyTheirAmounts)
{
    base->checkSum = 50;
    orva.pointsForSpend = 50;
    DocumentBonusRecord full = bonusRecord(10, 3);
    full.cardNumber = u"77"_s;
    full.valutCode = 1200;
    full.accrual = true;
    orva.bonusRecords = {full, bonusRecord(-4, 3)};
    const auto before = orva.getBonusRecords();
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_EQ(before.at(0), full) << "a list read earlier stays";
    full.bonusAmount = 5;
    EXPECT_EQ(orva.bonusRecords, (QList<DocumentBonusRecord>{full, bonusRecord(-2, 3)}));
    EXPECT_EQ(orva.pointsForEarn, 3.0);
}

TEST_F(RecalculationTest, LeavesTheOtherStateAndTheDocument)
{
    fillState();
    base->checkSum = 77;
    State expected(orva);
    expected.pointsForEarn = 3.5;
    expected.bonusRecords = {bonusRecord(3.5, 7)};
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_EQ(State(orva), expected);
    EXPECT_EQ(journal.entries(), calls);
    EXPECT_TRUE(base->pluginData.isEmpty());
    EXPECT_TRUE(open->pluginData.isEmpty());
}

TEST_F(RecalculationTest, AFailureOfTheDocumentLeavesThePointsAtNone)
{
    fillState();
    base->onCall = [](const QString&) { throw std::runtime_error("document"); };
    EXPECT_THROW(orva.recalculatePointsForEarn(), std::runtime_error);
    EXPECT_EQ(orva.pointsForEarn, 0.0);
    EXPECT_EQ(amounts(), QList<double>{7});
}

TEST_F(RecalculationTest, AFailureAtTheCardRecordComesAfterTheScaling)
{
    base->checkSum = 80;
    orva.pointsForSpend = 20;
    orva.bonusRecords = {bonusRecord(10)};
    base->onCall = [](const QString& call) {
        if (call.startsWith(u"getCardRecord")) {
            throw std::runtime_error("document");
        }
    };
    EXPECT_THROW(orva.recalculatePointsForEarn(), std::runtime_error);
    EXPECT_EQ(amounts(), QList<double>{8});
    EXPECT_EQ(orva.pointsForEarn, 8.0);
}

} // namespace
