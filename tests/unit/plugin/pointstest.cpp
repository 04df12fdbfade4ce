// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/plugin/orvatest.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

using namespace tests;

const double nan = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

class PointsTest : public OrvaTest
{
protected:
    double available(double points, const Successive<double>& sumToPay)
    {
        orva.pointsForSpend = points;
        asked->sumToPay = sumToPay;
        return orva.getPointsForSpend(asked);
    }

    static QString line(const QString& points, const QString& sum)
    {
        return u"debug: Доступные баллы: '%1', сумма к оплате: '%2'. Выбираем минимум"_s.arg(points,
                                                                                             sum);
    }

    const QSharedPointer<RecordingDocument> asked =
        QSharedPointer<RecordingDocument>::create(u"asked"_s);
};

TEST_F(PointsTest, TheSmallerOfPointsAndSumToPayMayBeSpent)
{
    EXPECT_EQ(available(150.5, 100), 100.0);
    EXPECT_EQ(journal.taken(),
              (QStringList{u"asked.getSumToPay()"_s, line(u"150.50"_s, u"100.00"_s),
                           u"asked.getSumToPay()"_s}));
    EXPECT_EQ(available(80.25, 100), 80.25);
    EXPECT_EQ(journal.taken().at(1), line(u"80.25"_s, u"100.00"_s));
}

TEST_F(PointsTest, WithoutPointsNothingMayBeSpent)
{
    EXPECT_EQ(available(0, 100), 0.0);
    EXPECT_EQ(available(0, 0), 0.0);
    EXPECT_EQ(available(0, infinity), 0.0);
}

TEST_F(PointsTest, ANegativeSumToPayIsAnsweredAsItIs)
{
    EXPECT_EQ(available(150.5, -12.5), -12.5);
    EXPECT_EQ(journal.taken().at(1), line(u"150.50"_s, u"-12.50"_s));
    EXPECT_EQ(available(0, -12.5), -12.5);
    EXPECT_EQ(available(-20, -12.5), -20.0);
}

TEST_F(PointsTest, TheSecondAnswerOfTheDocumentDecides)
{
    EXPECT_EQ(available(50, {100, 30}), 30.0);
    EXPECT_EQ(journal.taken().at(1), line(u"50.00"_s, u"100.00"_s)) << "the first one is logged";
    EXPECT_EQ(available(50, {30, 100}), 50.0);
    EXPECT_EQ(journal.taken().at(1), line(u"50.00"_s, u"30.00"_s));
}

TEST_F(PointsTest, OnATieTheSumToPayIsAnswered)
{
    // Only the sign of zero tells the two apart.
    EXPECT_TRUE(std::signbit(available(0.0, -0.0)));
    EXPECT_FALSE(std::signbit(available(-0.0, 0.0)));
    EXPECT_EQ(available(25, 25), 25.0);
}

TEST_F(PointsTest, WhenEitherIsNoNumberTheSumToPayIsAnswered)
{
    EXPECT_EQ(available(nan, 100), 100.0);
    EXPECT_EQ(journal.taken().at(1), line(u"nan"_s, u"100.00"_s));
    EXPECT_TRUE(std::isnan(available(100, nan)));
    EXPECT_EQ(journal.taken().at(1), line(u"100.00"_s, u"nan"_s));
    EXPECT_EQ(available(nan, -1), -1.0);
    EXPECT_EQ(available(nan, infinity), infinity);
}

TEST_F(PointsTest, InfinitiesAreCompared)
{
    EXPECT_EQ(available(infinity, 100), 100.0);
    EXPECT_EQ(available(100, infinity), 100.0);
    EXPECT_EQ(available(-infinity, 100), -infinity);
    EXPECT_EQ(available(100, -infinity), -infinity);
}

TEST_F(PointsTest, AmountsAreLoggedWithTwoDecimals)
{
    available(0.005, 1234567.891);
    EXPECT_EQ(journal.taken().at(1), line(u"0.01"_s, u"1234567.89"_s));
    available(2.675, 1e15);
    EXPECT_EQ(journal.taken().at(1), line(u"2.67"_s, u"1000000000000000.00"_s));
}

TEST_F(PointsTest, AskingChangesNothing)
{
    fillState();
    const State before(orva);
    asked->sumToPay = 5;
    EXPECT_EQ(orva.getPointsForSpend(asked), 5.0);
    EXPECT_EQ(State(orva), before);
}

TEST_F(PointsTest, AnExceptionOfTheDocumentPasses)
{
    asked->onCall = [](const QString&) { throw std::runtime_error("document"); };
    EXPECT_THROW(orva.getPointsForSpend(asked), std::runtime_error);
    EXPECT_EQ(journal.entries(), QStringList{u"asked.getSumToPay()"_s});
}

TEST_F(PointsTest, SetsThePointsUnrounded)
{
    orva.setPointsForSpend(asked, 12.345);
    EXPECT_EQ(orva.pointsForSpend, 12.345);
    EXPECT_EQ(journal.taken(), QStringList()) << "neither logged nor asked of the document";
    asked->sumToPay = 100;
    EXPECT_EQ(orva.getPointsForSpend(asked), 12.345);
    asked->sumToPay = 12.344;
    EXPECT_EQ(orva.getPointsForSpend(asked), 12.344);
}

TEST_F(PointsTest, SetsWhateverItIsGiven)
{
    for (const double points : {0.0, -5.5, 1e300, infinity, -infinity}) {
        orva.setPointsForSpend({}, points);
        EXPECT_EQ(orva.pointsForSpend, points);
    }
    orva.setPointsForSpend({}, nan);
    EXPECT_TRUE(std::isnan(orva.pointsForSpend));
    EXPECT_EQ(journal.entries(), QStringList());
}

TEST_F(PointsTest, SettingThePointsLeavesTheRestAlone)
{
    fillState();
    State expected(orva);
    expected.pointsForSpend = 3;
    orva.setPointsForSpend(asked, 3);
    EXPECT_EQ(State(orva), expected);
    EXPECT_EQ(asked->cardRecord, QSharedPointer<DocumentCardRecord>());
}

} // namespace
