// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "host/document/bonusimpact.h"
#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/recordingwrapper.h"
#include "tests/unit/client/steps.h"

using namespace Qt::StringLiterals;
using ::testing::DoDefault;
using ::testing::NiceMock;
using tests::impact;
using tests::written;

namespace {

using ::testing::_;

constexpr auto discountType = static_cast<EDiscountType::type>(2);
constexpr auto pointsType = static_cast<EDiscountType::type>(5);

class UsedImpacts : public ::testing::Test
{
protected:
    /// The answer as it is written after the impacts were inserted.
    QString inserted(const QString& answer, const QList<QSharedPointer<DocumentImpact>>& impacts)
    {
        QDomDocument document = tests::parse(answer);
        QDomElement root = document.documentElement();
        client.insertUsedImpacts(root, impacts);
        return written(root);
    }

    QSharedPointer<DocumentCardRecord> own = tests::cardRecord(u"77"_s);
    QSharedPointer<DocumentCardRecord> foreign = tests::cardRecord(u"88"_s, 7);
    tests::OpenInterface client;
};

const QString twoLines = u"<a><items><RawItem><id>1</id></RawItem><RawItem><id>2</id></RawItem>"
                         "</items></a>"_s;

} // namespace

TEST_F(UsedImpacts, ofALineJoinInOneElementInTheOrderOfTheList)
{
    EXPECT_EQ(
        inserted(twoLines, {impact(discountType, 1, 15.5, own), impact(pointsType, 1, 40, own)}),
        u"<a><items><RawItem><id>1</id><usedAwards><RawItemUsedAwards><usedDiscount>15.50"
        "</usedDiscount><usedBonusInCurrency>40.00</usedBonusInCurrency></RawItemUsedAwards>"
        "</usedAwards></RawItem><RawItem><id>2</id></RawItem></items></a>"_s);
    EXPECT_EQ(
        inserted(twoLines, {impact(pointsType, 1, 40, own), impact(discountType, 1, 15.5, own)}),
        u"<a><items><RawItem><id>1</id><usedAwards><RawItemUsedAwards><usedBonusInCurrency>40.00"
        "</usedBonusInCurrency><usedDiscount>15.50</usedDiscount></RawItemUsedAwards>"
        "</usedAwards></RawItem><RawItem><id>2</id></RawItem></items></a>"_s);
}

TEST_F(UsedImpacts, ofEqualKindAreNotAddedUp)
{
    EXPECT_EQ(
        inserted(twoLines, {impact(discountType, 2, 1, own), impact(discountType, 2, 2.345, own)}),
        u"<a><items><RawItem><id>1</id></RawItem><RawItem><id>2</id><usedAwards>"
        "<RawItemUsedAwards><usedDiscount>1.00</usedDiscount><usedDiscount>2.35</usedDiscount>"
        "</RawItemUsedAwards></usedAwards></RawItem></items></a>"_s);
}

TEST_F(UsedImpacts, keepTheirSignAndAreWrittenWithTwoDecimalsEvenWhenZero)
{
    EXPECT_EQ(
        inserted(u"<a><items><RawItem><id>1</id></RawItem></items></a>"_s,
                 {impact(discountType, 1, -3.5, own), impact(pointsType, 1, 0, own),
                  impact(pointsType, 1, 2.675, own)}),
        u"<a><items><RawItem><id>1</id><usedAwards><RawItemUsedAwards><usedDiscount>-3.50"
        "</usedDiscount><usedBonusInCurrency>0.00</usedBonusInCurrency><usedBonusInCurrency>2.67"
        "</usedBonusInCurrency></RawItemUsedAwards></usedAwards></RawItem></items></a>"_s);
}

TEST_F(UsedImpacts, ofAnotherSystemOrOfNoCardAreNotReported)
{
    EXPECT_EQ(
        inserted(twoLines, {impact(discountType, 1, 5, foreign), impact(pointsType, 1, 5, foreign),
                            impact(discountType, 1, 5, {}), impact(pointsType, 2, 5, {})}),
        twoLines);
}

TEST_F(UsedImpacts, ofOtherTypesAreNotReported)
{
    for (const int type : {0, 1, 3, 4, 6}) {
        EXPECT_EQ(inserted(twoLines, {impact(static_cast<EDiscountType::type>(type), 1, 5, own)}),
                  twoLines)
            << type;
    }
}

TEST_F(UsedImpacts, forAPositionOfNoLineAreIgnored)
{
    EXPECT_EQ(inserted(twoLines, {impact(discountType, 3, 5, own), impact(pointsType, 0, 5, own)}),
              twoLines);
}

TEST_F(UsedImpacts, leaveTheAnswerUnchangedWhenThereAreNone)
{
    EXPECT_EQ(inserted(twoLines, {}), twoLines);
}

TEST_F(UsedImpacts, ofPositionZeroGoToLinesWithoutAReadableId)
{
    const auto zero = impact(pointsType, 0, 5, own);
    const QString awards =
        u"<usedAwards><RawItemUsedAwards><usedBonusInCurrency>5.00</usedBonusInCurrency>"
        "</RawItemUsedAwards></usedAwards>"_s;
    EXPECT_EQ(inserted(u"<a><items><RawItem/></items></a>"_s, {zero}),
              u"<a><items><RawItem>"_s + awards + u"</RawItem></items></a>"_s);
    for (const QString& id : {u"x"_s, u""_s, u"1.5"_s, u"0x1"_s, u"2147483648"_s, u"-2147483649"_s,
                              u"99999999999999999999"_s}) {
        const QString line = id.isEmpty() ? u"<id/>"_s : u"<id>"_s + id + u"</id>"_s;
        EXPECT_EQ(inserted(u"<a><items><RawItem>"_s + line + u"</RawItem></items></a>"_s, {zero}),
                  u"<a><items><RawItem>"_s + line + awards + u"</RawItem></items></a>"_s);
    }
}

TEST_F(UsedImpacts, reachTheEndsOfTheIntegerRange)
{
    for (const int position : {2147483647, -2147483647 - 1}) {
        const QString answer = u"<a><items><RawItem><id>"_s + QString::number(position) +
                               u"</id></RawItem></items></a>"_s;
        EXPECT_TRUE(inserted(answer, {impact(pointsType, position, 5, own)})
                        .contains(u"<usedBonusInCurrency>5.00</usedBonusInCurrency>"_s));
    }
}

TEST_F(UsedImpacts, takeTheFirstIdOfALine)
{
    const QString answer = u"<a><items><RawItem><id>1</id><id>2</id></RawItem></items></a>"_s;
    EXPECT_EQ(inserted(answer, {impact(pointsType, 2, 5, own)}), answer);
    EXPECT_NE(inserted(answer, {impact(pointsType, 1, 5, own)}), answer);
}

TEST_F(UsedImpacts, goToEveryLineOfThePosition)
{
    EXPECT_EQ(inserted(u"<a><items><RawItem><id>1</id></RawItem><RawItem><id>1</id></RawItem>"
                       "</items></a>"_s,
                       {impact(discountType, 1, 15.5, own)}),
              u"<a><items><RawItem><id>1</id><usedAwards><RawItemUsedAwards><usedDiscount>15.50"
              "</usedDiscount></RawItemUsedAwards></usedAwards></RawItem><RawItem><id>1</id>"
              "<usedAwards><RawItemUsedAwards><usedDiscount>15.50</usedDiscount>"
              "</RawItemUsedAwards></usedAwards></RawItem></items></a>"_s);
}

TEST_F(UsedImpacts, areReadFromTheTotalsAndNotFromTheAmountsRecordedForPositions)
{
    const auto bonus = impact(pointsType, 1, 3.33, own);
    bonus->addDetailForPosition(1, 3.34);
    EXPECT_TRUE(
        inserted(twoLines, {bonus}).contains(u"<usedBonusInCurrency>3.33</usedBonusInCurrency>"_s));
}

TEST_F(UsedImpacts, changeNothingInAnAnswerWithoutLines)
{
    for (const QString& answer :
         {u"<a/>"_s, u"<a><items/></a>"_s, u"<a><RawItem><id>1</id></RawItem></a>"_s}) {
        EXPECT_EQ(inserted(answer, {impact(discountType, 1, 15.5, own)}), answer);
    }
}

TEST_F(UsedImpacts, doubleWhenTheyAreInsertedIntoTheSameAnswerTwice)
{
    QDomDocument document = tests::parse(u"<a><items><RawItem><id>1</id></RawItem></items></a>"_s);
    QDomElement root = document.documentElement();
    client.insertUsedImpacts(root, {impact(discountType, 1, 15.5, own)});
    client.insertUsedImpacts(root, {impact(discountType, 1, 15.5, own)});
    EXPECT_EQ(written(root),
              u"<a><items><RawItem><id>1</id><usedAwards><RawItemUsedAwards><usedDiscount>15.50"
              "</usedDiscount><usedDiscount>15.50</usedDiscount></RawItemUsedAwards></usedAwards>"
              "</RawItem></items></a>"_s);
}

TEST_F(UsedImpacts, areInsertedThroughTheHostsHelperAsAwards)
{
    auto wrapper = QSharedPointer<NiceMock<tests::RecordingWrapper>>::create();
    client.xmlWrapper = wrapper;
    const QList<QString> path{u"usedAwards"_s, u"RawItemUsedAwards"_s};
    EXPECT_CALL(*wrapper, insertElement(_, path, _, static_cast<XmlWrapper::Operation>(1)))
        .Times(2)
        .WillRepeatedly(DoDefault());
    inserted(twoLines, {impact(discountType, 1, 15.5, own), impact(pointsType, 2, 40, own)});
}

TEST_F(UsedImpacts, insertedBeforeAnExceptionStay)
{
    auto wrapper = QSharedPointer<NiceMock<tests::RecordingWrapper>>::create();
    client.xmlWrapper = wrapper;
    EXPECT_CALL(*wrapper, insertElement(_, _, _, _))
        .WillOnce(DoDefault())
        .WillOnce([](QDomElement&, const QList<QString>&, const QDomNode&, XmlWrapper::Operation) {
            throw std::bad_alloc();
        });
    QDomDocument document = tests::parse(twoLines);
    QDomElement root = document.documentElement();
    EXPECT_THROW(client.insertUsedImpacts(
                     root, {impact(discountType, 1, 15.5, own), impact(discountType, 2, 4, own)}),
                 std::bad_alloc);
    EXPECT_EQ(written(root),
              u"<a><items><RawItem><id>1</id><usedAwards><RawItemUsedAwards><usedDiscount>15.50"
              "</usedDiscount></RawItemUsedAwards></usedAwards></RawItem><RawItem><id>2</id>"
              "</RawItem></items></a>"_s);
}
