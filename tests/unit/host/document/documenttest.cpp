// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/document.h"
#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"
#include "tests/unit/client/printers.h"

#include <gtest/gtest.h>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

QSharedPointer<GoodsItem> line(int position, double sum)
{
    const auto item = QSharedPointer<GoodsItem>::create();
    item->setPosnum(position);
    item->setSumb(sum);
    return item;
}

QSharedPointer<DocumentCardRecord> recordOf(int loyaltySystemType)
{
    return QSharedPointer<DocumentCardRecord>::create(QSharedPointer<Card>::create(u"77"_s),
                                                      loyaltySystemType);
}

QSharedPointer<DocumentImpactDetail> detailOf(double sum,
                                              const QSharedPointer<DocumentCardRecord>& record)
{
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setDiscountSum(sum);
    detail->setCardRecord(record);
    return detail;
}

QSharedPointer<DocumentImpact> discount(double sum,
                                        const QSharedPointer<DocumentCardRecord>& record = {})
{
    return QSharedPointer<DiscountImpact>::create(detailOf(sum, record));
}

TEST(Document, AnEmptyOneHasNothing)
{
    const Document document;
    EXPECT_EQ(document.getCheckSum(), 0.0);
    EXPECT_EQ(document.getSumToPay(), 0.0);
    EXPECT_EQ(document.getPaymentSum(), 0.0);
    EXPECT_EQ(document.getCheckSumKopecks(), 0);
    EXPECT_FALSE(document.hasDateTime());
    EXPECT_TRUE(document.getDocumentId().isEmpty());
    EXPECT_TRUE(document.getSaleDocumentId().isEmpty());
    EXPECT_TRUE(document.getGoodsItems().isEmpty());
    EXPECT_TRUE(document.getImpacts().isEmpty());
    EXPECT_TRUE(document.getCardRecords().isEmpty());
    EXPECT_TRUE(document.getPluginData().isEmpty());
}

TEST(Document, GivesBackWhatWasSet)
{
    Document document;
    const QDateTime time(QDate(2024, 3, 5), QTime(14, 20, 31));
    document.setDocumentId(u"a-1"_s);
    document.setCheckNumber(117);
    document.setDateTime(time);
    document.setSaleDocumentId(u"a-0"_s);
    document.setDocumentType(EDocumentType::ReturnBySale);
    EXPECT_EQ(document.getDocumentId(), u"a-1"_s);
    EXPECT_EQ(document.getCheckNumber(), 117);
    EXPECT_TRUE(document.hasDateTime());
    EXPECT_EQ(document.getDateTime(), time);
    EXPECT_EQ(document.getSaleDocumentId(), u"a-0"_s);
    EXPECT_EQ(document.getDocumentType(), 25);
    document.setDocumentType(EDocumentType::Sale);
    EXPECT_EQ(document.getDocumentType(), 1);
    document.setDocumentType(7);
    EXPECT_EQ(document.getDocumentType(), 7);
}

TEST(Document, CheckSumIsTheGoodsLessDiscountsAndPoints)
{
    Document document;
    document.setGoodsItems({line(1, 100.10), line(2, 200.25)});
    EXPECT_EQ(document.getCheckSum(), 300.35);
    document.addImpact(discount(15.55));
    EXPECT_EQ(document.getCheckSum(), 284.80);
    document.addImpact(QSharedPointer<BonusImpact>::create(detailOf(40, {})));
    EXPECT_EQ(document.getCheckSum(), 244.80);
    EXPECT_EQ(document.getCheckSumKopecks(), 24480);
}

TEST(Document, SumToPayIsTheCheckSumLessWhatWasTendered)
{
    Document document;
    document.setGoodsItems({line(1, 345.50)});
    EXPECT_EQ(document.getSumToPay(), 345.50);
    document.setPaymentKopecks(20000);
    EXPECT_EQ(document.getPaymentSum(), 200.0);
    EXPECT_EQ(document.getSumToPay(), 145.50);
    EXPECT_EQ(document.getCheckSum(), 345.50) << "money tendered is no discount";
    document.setPaymentKopecks(34551);
    EXPECT_EQ(document.getSumToPay(), -0.01);
}

TEST(Document, CountsInWholeKopecks)
{
    Document document;
    QList<QSharedPointer<GoodsItem>> lines;
    for (int position = 1; position <= 10; ++position) {
        lines.append(line(position, 0.1));
    }
    document.setGoodsItems(lines);
    EXPECT_EQ(document.getCheckSum(), 1.0) << "ten doubles of 0.1 add up to less than 1";
    document.addImpact(discount(2.675));
    EXPECT_EQ(document.getCheckSumKopecks(), 100 - 267);
}

TEST(Document, EachAmountIsRoundedByItself)
{
    Document document;
    document.setGoodsItems({line(1, 10)});
    document.addImpact(discount(0.004));
    document.addImpact(discount(0.004));
    EXPECT_EQ(document.getCheckSumKopecks(), 1000);
    document.addImpact(discount(0.006));
    document.addImpact(discount(0.006));
    EXPECT_EQ(document.getCheckSumKopecks(), 998);
}

TEST(Document, ImpactsThatAreNotFiniteCountAsNothing)
{
    Document document;
    document.setGoodsItems({line(1, 50)});
    document.addImpact(discount(std::numeric_limits<double>::infinity()));
    document.addImpact(discount(-std::numeric_limits<double>::infinity()));
    document.addImpact(discount(std::numeric_limits<double>::quiet_NaN()));
    document.addImpact(discount(1.25));
    EXPECT_EQ(document.getCheckSum(), 48.75);
    EXPECT_EQ(document.getImpacts().size(), 4);
}

TEST(Document, TotalsCountNotTheAmountsOfPositions)
{
    Document document;
    document.setGoodsItems({line(1, 50)});
    const auto impact = QSharedPointer<BonusImpact>::create(detailOf(5, {}));
    impact->addDetailForPosition(1, 30);
    document.addImpact(impact);
    EXPECT_EQ(document.getCheckSum(), 45.0);
    impact->getTotals()->setDiscountSum(30);
    EXPECT_EQ(document.getCheckSum(), 20.0) << "totals set later count at once";
}

TEST(Document, KeepsImpactsInTheOrderOfApplication)
{
    Document document;
    const auto first = discount(1);
    const auto second = discount(1);
    document.addImpact(second);
    document.addImpact(first);
    document.addImpact(second);
    EXPECT_EQ(document.getImpacts(),
              (QList<QSharedPointer<DocumentImpact>>{second, first, second}));
}

TEST(Document, TakesOffTheImpactsOfOneLoyaltySystemOnly)
{
    Document document;
    document.setGoodsItems({line(1, 100)});
    const auto cashiers = discount(1);
    const auto others = discount(2, recordOf(3));
    document.addImpact(discount(4, recordOf(15)));
    document.addImpact(cashiers);
    document.addImpact(QSharedPointer<BonusImpact>::create(detailOf(8, recordOf(15))));
    document.addImpact(others);
    document.removeImpacts(15);
    EXPECT_EQ(document.getImpacts(), (QList<QSharedPointer<DocumentImpact>>{cashiers, others}));
    EXPECT_EQ(document.getCheckSum(), 97.0);
    document.removeImpacts(15);
    EXPECT_EQ(document.getImpacts().size(), 2);
}

TEST(Document, TypeZeroTakesOffNothingWithoutACard)
{
    Document document;
    document.addImpact(discount(1));
    document.removeImpacts(0);
    EXPECT_EQ(document.getImpacts().size(), 1) << "an impact without a card has no system";
}

TEST(Document, FindsTheCardRecordByItsLoyaltySystem)
{
    Document document;
    const auto third = recordOf(3);
    const auto fifteenth = recordOf(15);
    document.addCardRecord(third);
    document.addCardRecord(fifteenth);
    document.addCardRecord(recordOf(15));
    EXPECT_EQ(document.getCardRecord(15), fifteenth) << "the first one of that system";
    EXPECT_EQ(document.getCardRecord(3), third);
    EXPECT_TRUE(document.getCardRecord(4).isNull());
    EXPECT_EQ(document.getCardRecords().size(), 3);
}

TEST(Document, KeepsPluginDataByOwnerAndKey)
{
    Document document;
    document.setPluginValue(u"Orva"_s, u"lastResponse"_s, u"<a/>"_s);
    document.setPluginValue(u"Orva"_s, u"bonusRecords"_s, QVariantList{1});
    document.setPluginValue(u"Other"_s, u"lastResponse"_s, 5);
    EXPECT_EQ(document.getPluginValue(u"Orva"_s, u"lastResponse"_s, 0), QVariant(u"<a/>"_s));
    EXPECT_EQ(document.getPluginValue(u"Other"_s, u"lastResponse"_s, 0), QVariant(5));
    document.setPluginValue(u"Orva"_s, u"lastResponse"_s, u"<b/>"_s);
    EXPECT_EQ(
        document.getPluginData(),
        (QMap<QString, QVariantMap>{
            {u"Orva"_s, {{u"lastResponse"_s, u"<b/>"_s}, {u"bonusRecords"_s, QVariantList{1}}}},
            {u"Other"_s, {{u"lastResponse"_s, 5}}}}));
}

TEST(Document, AnswersTheDefaultForPluginDataThatIsMissing)
{
    Document document;
    document.setPluginValue(u"Orva"_s, u"a"_s, 1);
    EXPECT_EQ(document.getPluginValue(u"Orva"_s, u"b"_s, 7), QVariant(7));
    EXPECT_EQ(document.getPluginValue(u"Nobody"_s, u"a"_s, u"x"_s), QVariant(u"x"_s));
    EXPECT_FALSE(document.getPluginValue(u"Nobody"_s, u"a"_s, QVariant()).isValid());
    EXPECT_EQ(document.getPluginData().size(), 1) << "asking stores nothing";
}

TEST(Document, PluginDataCanBePutBackWhole)
{
    Document document;
    document.setPluginValue(u"Old"_s, u"a"_s, 1);
    const QMap<QString, QVariantMap> stored{{u"Orva"_s, {{u"a"_s, 2}}}};
    document.setPluginData(stored);
    EXPECT_EQ(document.getPluginData(), stored);
}

TEST(Document, RefreshingLoyaltyDataChangesNoSum)
{
    Document document;
    document.setGoodsItems({line(1, 12.34)});
    document.addImpact(discount(0.34));
    document.refreshLoyaltyData();
    EXPECT_EQ(document.getCheckSum(), 12.0);
}

TEST(DocumentTypes, CarryTheValuesThatPluginsRelyOn)
{
    EXPECT_EQ(static_cast<int>(EDocumentType::Sale), 1);
    EXPECT_EQ(static_cast<int>(EDocumentType::ReturnBySale), 25);
}

} // namespace
