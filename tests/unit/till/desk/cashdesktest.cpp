// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/cashdesk.h"

#include "host/core/basicexception.h"
#include "tests/unit/till/tilltest.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

using namespace Qt::StringLiterals;
using till::Check;
using till::LoyaltyState;
using till::PointsChoice;

using CashDeskTest = tests::TillTest;
using tests::refusalOf;

TEST_F(CashDeskTest, aCheckWithoutACardMakesNoLoyaltyCall)
{
    desk->openSale(twoLines());
    const Check closed = desk->close();
    EXPECT_EQ(loyalty->calls, QStringList());
    EXPECT_FALSE(closed.confirmed);
    EXPECT_EQ(messages(), 0);
    EXPECT_EQ(closed.loyalty, LoyaltyState::NoCard);
}

TEST_F(CashDeskTest, theCallsOfASaleStandInTheContractsOrder)
{
    loyalty->discounts = {{1, 30.0}};
    loyalty->awards = {{1, 8.5}};
    loyalty->spendable = 100;
    sell(PointsChoice::sum(50'00));
    EXPECT_EQ(loyalty->calls,
              (QStringList{u"identify"_s, u"request"_s, u"set 50.00"_s, u"spend of 200.00"_s,
                           u"set 50.00"_s, u"recalculate to 150.00 of 200.00"_s, u"commit"_s,
                           u"clear"_s}));
}

TEST_F(CashDeskTest, aSaleWithoutPointsIsNotRecalculated)
{
    loyalty->spendable = 100;
    sell();
    EXPECT_EQ(loyalty->calls, (QStringList{u"identify"_s, u"request"_s, u"commit"_s, u"clear"_s}));
}

TEST_F(CashDeskTest, theEffectOfARequestIsOnTheCheck)
{
    loyalty->discounts = {{1, 30.0}, {2, 0.5}};
    loyalty->awards = {{1, 8.5}};
    loyalty->spendable = 100;
    openReady();
    const Check& check = desk->current();
    EXPECT_EQ(check.discountKopecks(), 30'50);
    EXPECT_EQ(check.moneyKopecks(), 199'50);
    EXPECT_EQ(check.earnedKopecks(), 8'50);
    EXPECT_EQ(check.systemEarnKopecks, 8'50);
    EXPECT_EQ(check.cashierMessages, QStringList{u"Кассиру"_s});
    EXPECT_EQ(check.clientMessages, QStringList{u"Клиенту"_s});
    EXPECT_EQ(check.cardRecord()->getCard()->getClient()->getName(), u"Анна Соколова"_s);
    EXPECT_EQ(desk->availablePoints(), 100'00);
}

TEST_F(CashDeskTest, everyRequestOfAnUnchangedCheckSendsTheSameDocument)
{
    loyalty->discounts = {{1, 30.0}};
    loyalty->spendable = 100;
    openReady();
    desk->tender(500'00);
    desk->choosePoints(PointsChoice::all());
    ASSERT_TRUE(desk->request());
    desk->choosePoints(PointsChoice::sum(1'00));
    ASSERT_EQ(loyalty->requested.size(), 3);
    EXPECT_EQ(loyalty->requested.first(),
              u"1 230.00 [1 2x100=200 back  points 0] [2 0.5x60=30 back  points 0] impacts 0"_s);
    EXPECT_EQ(loyalty->requested.at(1), loyalty->requested.first());
    EXPECT_EQ(loyalty->requested.at(2), loyalty->requested.first());
}

TEST_F(CashDeskTest, aCardThatIsRefusedLeavesASaleWithoutLoyaltyAndWithoutASecondWait)
{
    loyalty->knowsCard = false;
    desk->openSale(twoLines());
    EXPECT_FALSE(desk->presentCard(u"1"_s));
    EXPECT_EQ(desk->takeNotices(),
              QStringList{u"The sale goes on without the loyalty system (Карта неизвестна)."_s});
    desk->changeQuantity(1, 1000);
    const Check closed = desk->close();
    EXPECT_EQ(loyalty->calls, QStringList{u"identify"_s});
    EXPECT_EQ(closed.loyalty, LoyaltyState::Refused);
    EXPECT_EQ(closed.refusal, u"Карта неизвестна"_s);
    EXPECT_EQ(messages(), 0);
}

TEST_F(CashDeskTest, anotherCardMayBePresentedAfterARefusedOne)
{
    loyalty->knowsCard = false;
    desk->openSale(twoLines());
    desk->presentCard(u"1"_s);
    loyalty->knowsCard = true;
    EXPECT_TRUE(desk->presentCard(u"2"_s));
    EXPECT_TRUE(desk->request());
    EXPECT_EQ(desk->close().cardNumber(), u"2"_s);
    EXPECT_EQ(messages(), 1);
}

TEST_F(CashDeskTest, aSecondCardIsRefused)
{
    openReady();
    EXPECT_EQ(refusalOf([&] { desk->presentCard(u"2"_s); }),
              u"The check has a card already; close or abandon it first."_s);
}

TEST_F(CashDeskTest, tellsHowLongEachRequestTookWhateverCameOfIt)
{
    QList<std::chrono::microseconds> told;
    desk->onRequest([&told](std::chrono::microseconds time) { told.append(time); });
    openReady();
    ASSERT_EQ(told.size(), 1);
    loyalty->onAsk = [] { throw std::runtime_error("out of luck"); };
    EXPECT_FALSE(desk->request());
    ASSERT_EQ(told.size(), 2);
    EXPECT_GE(std::min(told.first(), told.last()), std::chrono::microseconds(0));
}

TEST_F(CashDeskTest, aTrialLeavesNothingBehind)
{
    desk->openTrial(twoLines());
    EXPECT_EQ(store.list().size(), 0);
    desk->abandon();
    EXPECT_EQ(desk->takeNotices(), QStringList());
    desk->openTrial(twoLines());
    desk->leave();
    EXPECT_EQ(desk->takeNotices(), QStringList());
    EXPECT_EQ(store.list().size(), 0);
    desk->openSale(twoLines()); // what comes next is none
    EXPECT_EQ(store.list().size(), 1);
    desk->abandon();
    EXPECT_EQ(store.list().first().state, u"abandoned"_s);
}

TEST_F(CashDeskTest, whateverThePluginThrowsStopsNoSale)
{
    loyalty->onAsk = [] { throw BasicException(tr::Tr(u"x"_s, u"Беда"_s)); };
    desk->openSale(twoLines());
    EXPECT_FALSE(desk->presentCard(u"1"_s));
    EXPECT_EQ(desk->current().refusal, u"Беда"_s);
    loyalty->onAsk = nullptr;
    ASSERT_TRUE(desk->presentCard(u"1"_s));
    loyalty->onAsk = [] { throw std::runtime_error("out of luck"); };
    EXPECT_FALSE(desk->request());
    EXPECT_EQ(desk->current().refusal, u"out of luck"_s);
    loyalty->onAsk = [] { throw std::bad_alloc(); };
    EXPECT_FALSE(desk->request());
    EXPECT_EQ(desk->current().refusal, u"there is not enough memory"_s);
    EXPECT_FALSE(desk->close().confirmed);
}

TEST_F(CashDeskTest, aChangedCheckIsAskedAboutAgainBeforeItCloses)
{
    loyalty->discounts = {{1, 30.0}};
    openReady();
    desk->changeQuantity(1, 3000);
    EXPECT_EQ(desk->current().discountKopecks(), 0);
    EXPECT_EQ(desk->current().loyalty, LoyaltyState::Unasked);
    const Check closed = desk->close();
    EXPECT_EQ(loyalty->calls,
              (QStringList{u"identify"_s, u"request"_s, u"request"_s, u"commit"_s, u"clear"_s}));
    EXPECT_EQ(closed.discountKopecks(), 30'00);
    EXPECT_EQ(closed.moneyKopecks(), 300'00);
    EXPECT_TRUE(loyalty->requested.last().startsWith(u"1 330.00"_s));
}

TEST_F(CashDeskTest, aChangedCheckKeepsTheChosenPoints)
{
    loyalty->spendable = 50;
    openReady();
    desk->choosePoints(PointsChoice::all());
    desk->changePrice(1, 50'00);
    EXPECT_EQ(desk->current().spentKopecks(), 0);
    const Check closed = desk->close();
    EXPECT_EQ(closed.goodsKopecks(), 130'00);
    EXPECT_EQ(closed.spentKopecks(), 50'00);
    EXPECT_TRUE(closed.confirmed);
}

TEST_F(CashDeskTest, aChangedCheckWhoseRequestFailsClosesWithoutLoyalty)
{
    loyalty->discounts = {{1, 30.0}};
    loyalty->spendable = 50;
    openReady();
    desk->choosePoints(PointsChoice::all());
    desk->changeQuantity(1, 3000);
    loyalty->answers = false;
    const Check closed = desk->close();
    EXPECT_EQ(closed.loyalty, LoyaltyState::Refused);
    EXPECT_EQ(closed.refusal, u"Нет связи с сервером"_s);
    EXPECT_EQ(closed.moneyKopecks(), 330'00);
    EXPECT_TRUE(closed.document->getImpacts().isEmpty());
    EXPECT_EQ(messages(), 0);
    EXPECT_EQ(loyalty->calls.last(), u"rollback"_s);
    EXPECT_FALSE(loyalty->calls.contains(u"commit"_s));
}

TEST_F(CashDeskTest, aSecondCustomersSaleWithTheServerAwayQueuesNothing)
{
    sell();
    ASSERT_EQ(messages(), 1);
    desk->openSale(twoLines());
    ASSERT_TRUE(desk->presentCard(u"2200000000024"_s));
    loyalty->answers = false;
    EXPECT_FALSE(desk->request());
    EXPECT_FALSE(desk->close().confirmed);
    EXPECT_EQ(messages(), 1);
}

TEST_F(CashDeskTest, aNewRequestAfterAFailedOneBringsLoyaltyBack)
{
    openReady();
    loyalty->answers = false;
    EXPECT_FALSE(desk->request());
    loyalty->answers = true;
    EXPECT_TRUE(desk->request());
    EXPECT_TRUE(desk->close().confirmed);
    EXPECT_EQ(messages(), 1);
}

TEST_F(CashDeskTest, anAbandonedCheckLeavesNothingInTheQueue)
{
    openReady();
    const QString id = desk->current().id();
    desk->abandon();
    EXPECT_EQ(loyalty->calls.last(), u"rollback"_s);
    EXPECT_FALSE(desk->hasCheck());
    EXPECT_EQ(messages(), 0);
    EXPECT_EQ(session.getDocument(), nullptr);
    ASSERT_EQ(store.list().size(), 1);
    EXPECT_EQ(store.list().first().state, u"abandoned"_s);
    EXPECT_EQ(store.list().first().id, id);
}

TEST_F(CashDeskTest, aSystemThatFailsToLayACheckDownDoesNotKeepItOpen)
{
    openReady();
    loyalty->onRollback = [] { throw std::runtime_error("out of luck"); };
    desk->abandon();
    EXPECT_FALSE(desk->hasCheck());
    EXPECT_EQ(store.list().first().state, u"abandoned"_s);
    EXPECT_EQ(desk->takeNotices(),
              QStringList{u"The loyalty system does not lay the check down (out of luck)."_s});
}

TEST_F(CashDeskTest, oneCheckAtATime)
{
    EXPECT_EQ(refusalOf([&] { desk->close(); }), u"No check is open; open one first."_s);
    EXPECT_EQ(refusalOf([&] { desk->request(); }), u"No check is open; open one first."_s);
    desk->openSale(twoLines());
    EXPECT_EQ(
        refusalOf([&] { desk->openSale(twoLines()); }),
        u"Check %1 is still open; close, suspend or abandon it first."_s.arg(desk->current().id()));
}

TEST_F(CashDeskTest, linesAreChangedOnlyToWhatALineCanBe)
{
    desk->openSale(twoLines());
    EXPECT_EQ(refusalOf([&] { desk->changeQuantity(9, 1000); }), u"The check has no line 9."_s);
    EXPECT_EQ(refusalOf([&] { desk->changeQuantity(1, 1500); }),
              u"The quantity must be a whole number of pieces above 0."_s);
    EXPECT_EQ(refusalOf([&] { desk->changeQuantity(2, 0); }), u"The quantity must be above 0."_s);
    desk->changeQuantity(2, 333);
    EXPECT_EQ(desk->current().line(2)->sumKopecks, 19'98);
    EXPECT_DOUBLE_EQ(desk->current().document->getGoodsItems().at(1)->getSumb(), 19.98);
    EXPECT_EQ(refusalOf([&] { desk->changePrice(1, 9'999'999'999'99); }),
              u"The check's sum would be more than a till can count; nothing was changed."_s);
    EXPECT_EQ(desk->current().line(1)->sumKopecks, 200'00);
}

TEST_F(CashDeskTest, numbersFollowEachOtherAndAFileMaySetOne)
{
    desk->openSale(twoLines());
    const int first = desk->close().number();
    till::CheckFile numbered = twoLines();
    numbered.number = 117;
    desk->openSale(numbered);
    EXPECT_EQ(desk->close().number(), 117);
    desk->openSale(twoLines());
    EXPECT_EQ(desk->close().number(), first + 1);
}

TEST_F(CashDeskTest, aDocumentHasItsOwnTimeInWholeSeconds)
{
    const QDateTime now(QDate(2026, 3, 5), QTime(14, 20, 31, 987));
    const tests::StoppedClock clock(now);
    desk->openSale(twoLines());
    EXPECT_EQ(desk->current().document->getDateTime(), now.addMSecs(-987));
    EXPECT_EQ(desk->current().id().size(), 36);
}

TEST_F(CashDeskTest, cashMustCoverTheSumAndTheRestIsChange)
{
    desk->openSale(twoLines());
    desk->tender(229'99);
    EXPECT_EQ(refusalOf([&] { desk->close(); }),
              u"The sum is 230.00 and 229.99 was tendered; take the 0.01 that are missing."_s);
    EXPECT_DOUBLE_EQ(desk->current().document->getSumToPay(), 0.01);
    desk->tender(500'00);
    EXPECT_DOUBLE_EQ(desk->current().document->getPaymentSum(), 230.0);
    EXPECT_DOUBLE_EQ(desk->current().document->getSumToPay(), 0.0);
    const Check closed = desk->close();
    EXPECT_EQ(till::CashDesk::changeKopecks(closed), 270'00);
    EXPECT_DOUBLE_EQ(closed.document->getPaymentSum(), 230.0);
}

TEST_F(CashDeskTest, theDocumentsSumsMeanWhatTheContractsSay)
{
    loyalty->discounts = {{1, 30.0}};
    loyalty->spendable = 50;
    openReady();
    desk->choosePoints(PointsChoice::all());
    desk->tender(10'00);
    const auto document = desk->current().document;
    EXPECT_DOUBLE_EQ(document->getCheckSum(), 150.0);
    EXPECT_DOUBLE_EQ(document->getSumToPay(), 140.0);
    EXPECT_DOUBLE_EQ(document->getPaymentSum(), 10.0);
    EXPECT_DOUBLE_EQ(document->getGoodsItems().first()->getSumb(), 200.0);
}

TEST_F(CashDeskTest, leavingAbandonsAnOpenCheck)
{
    openReady();
    const QString id = desk->current().id();
    desk->leave();
    EXPECT_EQ(store.list().first().state, u"abandoned"_s);
    EXPECT_EQ(desk->takeNotices(),
              QStringList{u"Check %1 was still open and is abandoned."_s.arg(id)});
}
