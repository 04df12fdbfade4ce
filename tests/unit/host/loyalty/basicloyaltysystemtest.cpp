// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/basicloyaltysystem.h"
#include "host/document/discountimpact.h"
#include "host/document/document.h"
#include "tests/unit/client/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A system that has nothing to say, with its state in reach.
class System : public BasicLoyaltySystem
{
public:
    System() { loyaltySystemType = 15; }

    using BasicLoyaltySystem::bonusImpactsForSpend;
    using BasicLoyaltySystem::bonusRecords;
    using BasicLoyaltySystem::discountImpacts;
    using BasicLoyaltySystem::document;
    using BasicLoyaltySystem::lastError;
    using BasicLoyaltySystem::messagesToCashier;
    using BasicLoyaltySystem::messagesToClient;
    using BasicLoyaltySystem::pointsForEarn;
    using BasicLoyaltySystem::pointsForSpend;

    void fill()
    {
        const auto detail = QSharedPointer<DocumentImpactDetail>::create();
        pointsForSpend = 10;
        pointsForEarn = 5;
        discountImpacts = {QSharedPointer<DiscountImpact>::create(detail)};
        bonusImpactsForSpend = {QSharedPointer<BonusImpact>::create(detail)};
        bonusRecords = {DocumentBonusRecord()};
        messagesToCashier = {u"кассиру"_s};
        messagesToClient = {u"клиенту"_s};
        lastError = tr::Tr(u"code"_s, u"текст"_s);
    }
};

void expectCleared(System& system)
{
    EXPECT_EQ(system.pointsForSpend, 0.0);
    EXPECT_EQ(system.pointsForEarn, 0.0);
    EXPECT_TRUE(system.discountImpacts.isEmpty());
    EXPECT_TRUE(system.bonusImpactsForSpend.isEmpty());
    EXPECT_TRUE(system.bonusRecords.isEmpty());
    EXPECT_TRUE(system.messagesToCashier.isEmpty());
    EXPECT_TRUE(system.messagesToClient.isEmpty());
    EXPECT_TRUE(system.lastError.isEmpty());
}

DocumentBonusRecord accrual(int position, double amount, int valutCode)
{
    DocumentBonusRecord record;
    record.position = position;
    record.bonusAmount = amount;
    record.valutCode = valutCode;
    return record;
}

QSharedPointer<DocumentCardRecord> cardRecord()
{
    return QSharedPointer<DocumentCardRecord>::create(QSharedPointer<Card>::create(u"77"_s), 15);
}

TEST(BasicLoyaltySystem, IsEmptyAtFirst)
{
    System system;
    expectCleared(system);
    EXPECT_EQ(system.getLoyaltySystemType(), 15);
    EXPECT_TRUE(system.document.isNull());
    EXPECT_EQ(system.getRoundPrecisionForSpend(), 0.01);
}

TEST(BasicLoyaltySystem, ItsGettersAnswerFromTheState)
{
    System system;
    system.fill();
    EXPECT_EQ(system.getPointsForSpend({}), 10.0);
    EXPECT_EQ(system.getPointsForEarn(), 5.0);
    EXPECT_EQ(system.getDiscountImpacts(), system.discountImpacts);
    EXPECT_EQ(system.getBonusImpactsForSpend(), system.bonusImpactsForSpend);
    EXPECT_EQ(system.getBonusRecords(), system.bonusRecords);
    EXPECT_EQ(system.getMessagesToCashier(), QStringList{u"кассиру"_s});
    EXPECT_EQ(system.getMessagesToClient(), QStringList{u"клиенту"_s});
    EXPECT_TRUE(system.getMessagesToClientDisplay().isEmpty());
    EXPECT_EQ(system.getLastErrorString(), tr::Tr(u"code"_s, u"текст"_s));
    EXPECT_TRUE(system.hasPointsForSpend());
    EXPECT_TRUE(system.hasPointsForEarn());
    EXPECT_TRUE(system.hasBonusImpacts());
}

TEST(BasicLoyaltySystem, HasNoPointsWhenThereAreNone)
{
    System system;
    EXPECT_FALSE(system.hasPointsForSpend());
    EXPECT_FALSE(system.hasPointsForEarn());
    EXPECT_FALSE(system.hasBonusImpacts());
}

TEST(BasicLoyaltySystem, ClearingForgetsEverythingButTheDocument)
{
    System system;
    const auto document = QSharedPointer<Document>::create();
    system.setDocument(document);
    system.fill();
    system.clearLoyaltyData();
    expectCleared(system);
    EXPECT_EQ(system.document, document);
    EXPECT_EQ(system.getLoyaltySystemType(), 15);
}

TEST(BasicLoyaltySystem, RollbackCancelAndClosingClear)
{
    System system;
    system.fill();
    EXPECT_TRUE(system.rollback({}));
    expectCleared(system);
    system.fill();
    EXPECT_TRUE(system.cancel());
    expectCleared(system);
    system.fill();
    system.clearAfterClose();
    expectCleared(system);
}

TEST(BasicLoyaltySystem, TheLastErrorCanBeClearedAlone)
{
    System system;
    system.fill();
    system.clearLastErrorString();
    EXPECT_TRUE(system.getLastErrorString().isEmpty());
    EXPECT_EQ(system.pointsForSpend, 10.0);
}

TEST(BasicLoyaltySystem, AgreesToWhatItDoesNotDo)
{
    System system;
    system.fill();
    EXPECT_TRUE(system.request({}));
    EXPECT_TRUE(system.requestCommit(true));
    EXPECT_TRUE(system.commit({}));
    EXPECT_TRUE(system.spendPoints());
    EXPECT_TRUE(system.recalculatePointsForEarn());
    EXPECT_TRUE(system.recalculateAllPoints({}));
    EXPECT_TRUE(system.recalculatePointsForSpend({}));
    EXPECT_TRUE(system.restoreLoyaltySystem());
    EXPECT_TRUE(system.registerCheck());
    EXPECT_TRUE(system.payCheck());
    EXPECT_TRUE(system.beforePutoutCheck());
    EXPECT_TRUE(system.afterPutoutCheck());
    EXPECT_TRUE(system.revealCheck());
    EXPECT_EQ(system.pointsForSpend, 10.0);
    EXPECT_EQ(system.bonusRecords.size(), 1);
}

TEST(BasicLoyaltySystem, HasItsPlainAnswers)
{
    System system;
    EXPECT_FALSE(system.takeForCustomer());
    EXPECT_TRUE(system.isAllowPartialPointsSpend());
    EXPECT_TRUE(system.isAllowInternalDiscount());
    EXPECT_FALSE(system.useDiscOnChangeWithBonusPayment());
    EXPECT_FALSE(system.fillCardOwnerInfo());
    EXPECT_EQ(system.getCardNumber({u"0077"_s, ECardNumberType::Barcode}), u"0077"_s);
    EXPECT_EQ(system.getCardMode(), ECardMode::External);
    EXPECT_TRUE(system.getSlips().isEmpty());
    EXPECT_FALSE(system.cardReplace());
    EXPECT_EQ(system.getCardNumberTypeToAddCardInSubtotal(), ECardNumberType::Undefined);
    EXPECT_FALSE(system.requestInputPointsForSpendByLoyalty());
    EXPECT_FALSE(system.couponBelongsToSystem(ECoupon::External));
    EXPECT_TRUE(system.getBonusImpactsLimits({}).isEmpty());
    EXPECT_EQ(system.distributeBonusRecord({}, accrual(1, 2, 3)),
              QList<DocumentBonusRecord>{accrual(1, 2, 3)});
}

TEST(BasicLoyaltySystem, TakesThePointsToSpendAsTheyCome)
{
    System system;
    system.setPointsForSpend({}, 12.345);
    EXPECT_EQ(system.getPointsForSpend({}), 12.345);
    system.setRoundPrecisionForSpend(1);
    EXPECT_EQ(system.getRoundPrecisionForSpend(), 1.0);
    EXPECT_EQ(system.getPointsForSpend({}), 12.345);
}

TEST(BasicLoyaltySystem, KnowsTheAccrualsOfAPositionAndOfAKind)
{
    System system;
    system.bonusRecords = {accrual(1, 2.5, 1200), accrual(2, 4, 1200), accrual(1, 1, 7)};
    EXPECT_EQ(system.calculatePointsForEarnByQualifier({}, 1), 3.5);
    EXPECT_EQ(system.calculatePointsForEarnByQualifier({}, 9), 0.0);
    system.removeEarnByValutCode(1200);
    EXPECT_EQ(system.bonusRecords, QList<DocumentBonusRecord>{accrual(1, 1, 7)});
}

TEST(BasicLoyaltySystem, AnOptionIsOnOnlyAfterItWasSwitchedOn)
{
    System system;
    const auto option = LoyaltySystemOption::ConfirmThroughQueue;
    EXPECT_EQ(static_cast<int>(option), 16);
    EXPECT_FALSE(system.checkOption(option));
    system.setOption(option, true);
    EXPECT_TRUE(system.checkOption(option));
    EXPECT_FALSE(system.checkOption(static_cast<LoyaltySystemOption>(17)));
    system.setOption(option, false);
    EXPECT_FALSE(system.checkOption(option));
}

TEST(BasicLoyaltySystem, TheCardIsThatOfTheDocumentsRecord)
{
    System system;
    EXPECT_TRUE(system.getCard().isNull()) << "no document";
    const auto document = QSharedPointer<Document>::create();
    system.setDocument(document);
    EXPECT_FALSE(system.hasCard()) << "no record";
    const auto record = cardRecord();
    document->addCardRecord(record);
    EXPECT_TRUE(system.hasCard());
    EXPECT_EQ(system.getCard(), record->getCard());
    system.setDocument({});
    EXPECT_FALSE(system.hasCard());
}

TEST(BasicLoyaltySystem, IdentifiesARecordThatHasACard)
{
    System system;
    QSharedPointer<DocumentCardRecord> none;
    auto empty = QSharedPointer<DocumentCardRecord>::create();
    auto record = cardRecord();
    EXPECT_FALSE(system.identifyByCard(none, ECardNumberType::Manual));
    EXPECT_FALSE(system.identifyByCard(empty, ECardNumberType::Manual));
    EXPECT_TRUE(system.identifyByCard(record, ECardNumberType::Manual));
}

TEST(BasicLoyaltySystem, CardInfoNamesTheOwnerWhereThereIsOne)
{
    System system;
    const auto record = cardRecord();
    EXPECT_TRUE(system.getCardInfo({}, ECardNumberType::Barcode).isEmpty());
    EXPECT_TRUE(system.getCardInfo(record, ECardNumberType::Barcode).isEmpty());
    const auto client = QSharedPointer<Client>::create();
    client->setName(u"Анна Иванова"_s);
    record->getCard()->setClient(client);
    EXPECT_EQ(system.getCardInfo(record, ECardNumberType::Barcode), QStringList{u"Анна Иванова"_s});
}

TEST(BasicLoyaltySystem, PluginDataStandsInTheDocumentUnderTheSystemsName)
{
    System system;
    const auto current = QSharedPointer<Document>::create();
    const auto other = QSharedPointer<Document>::create();
    system.setPluginData(u"key"_s, 1);
    EXPECT_FALSE(system.getPluginData(u"key"_s).isValid()) << "no document to keep it";
    system.setDocument(current);
    system.setPluginData(u"key"_s, 2);
    system.setPluginData(other, u"key"_s, 3);
    EXPECT_EQ(system.getPluginData(u"key"_s), QVariant(2));
    EXPECT_EQ(system.getPluginData(other, u"key"_s), QVariant(3));
    EXPECT_EQ(current->getPluginValue(system.getStoreDataKey(), u"key"_s, 0), QVariant(2));
    EXPECT_FALSE(system.getPluginData(other, u"else"_s).isValid());
}

TEST(BasicPlugin, AFeatureMatchesOnceItWasSet)
{
    System system;
    EXPECT_FALSE(system.isFeatureMatched(u"queue"_s));
    system.setFeature(u"queue"_s);
    EXPECT_TRUE(system.isFeatureMatched(u"queue"_s));
    EXPECT_FALSE(system.isFeatureMatched(u"Queue"_s));
    EXPECT_FALSE(system.isFeatureMatched(QString()));
}

} // namespace
