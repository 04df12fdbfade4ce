// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/money.h"
#include "tests/unit/till/storedform.h"
#include "tests/unit/till/tilltest.h"
#include "till/checks/checkcodec.h"

#include <stdexcept>

using namespace Qt::StringLiterals;
using tests::refusalOf;
namespace storedform = tests::storedform;
using till::Check;
using till::LoyaltyState;
using till::PointsChoice;

using SuspendTest = tests::TillTest;

namespace {

/// Everything of an impact as a text.
QString describe(const DocumentImpact& impact)
{
    const auto detail = impact.getTotals();
    QStringList sums;
    const auto positions = impact.getPositionSums();
    for (auto it = positions.cbegin(); it != positions.cend(); ++it) {
        sums.append(u"%1:%2"_s.arg(it.key()).arg(it.value(), 0, 'g', 17));
    }
    return u"%1 %2 %3 %4 %5 %6 %7 %8 %9 "_s
               .arg(dynamic_cast<const BonusImpact*>(&impact) != nullptr ? u"bonus"_s
                                                                         : u"discount"_s)
               .arg(detail->getCardType().toInt())
               .arg(detail->getCardIndex().toString(),
                    detail->getDateTime().toString(Qt::ISODateWithMs))
               .arg(detail->getDiscountType())
               .arg(detail->getDiscountMode())
               .arg(detail->getDiscountName())
               .arg(detail->getDiscountObject())
               .arg(detail->getPosition()) +
           u"%1 %2 %3 %4 "_s.arg(detail->getDiscountRate().toString())
               .arg(detail->getDiscountSum(), 0, 'g', 17)
               .arg(detail->getImpactSource())
               .arg(detail->isMinPriceIgnored()) +
           sums.join(u' ');
}

QStringList describe(const QList<QSharedPointer<DocumentImpact>>& impacts)
{
    QStringList texts;
    for (const auto& impact : impacts) {
        texts.append(describe(*impact));
    }
    return texts;
}

void expectSame(const Check& actual, const Check& expected)
{
    EXPECT_EQ(actual.id(), expected.id());
    EXPECT_EQ(actual.number(), expected.number());
    EXPECT_EQ(actual.document->getDocumentType(), expected.document->getDocumentType());
    EXPECT_EQ(actual.document->getDateTime(), expected.document->getDateTime());
    EXPECT_EQ(actual.document->getSaleDocumentId(), expected.document->getSaleDocumentId());
    EXPECT_EQ(actual.document->getPaymentSum(), expected.document->getPaymentSum());
    EXPECT_EQ(actual.document->getCheckSum(), expected.document->getCheckSum());
    EXPECT_EQ(actual.document->getPluginData(), expected.document->getPluginData());
    EXPECT_EQ(describe(actual.document->getImpacts()), describe(expected.document->getImpacts()));
    EXPECT_EQ(actual.lines, expected.lines);
    EXPECT_EQ(actual.loyalty, expected.loyalty);
    EXPECT_EQ(actual.refusal, expected.refusal);
    EXPECT_EQ(actual.points, expected.points);
    EXPECT_EQ(actual.pointsTouched, expected.pointsTouched);
    EXPECT_EQ(actual.systemEarnKopecks, expected.systemEarnKopecks);
    EXPECT_EQ(actual.cashierMessages, expected.cashierMessages);
    EXPECT_EQ(actual.clientMessages, expected.clientMessages);
    EXPECT_EQ(actual.tenderedKopecks, expected.tenderedKopecks);
    EXPECT_EQ(actual.confirmed, expected.confirmed);
    EXPECT_EQ(actual.returnsBefore, expected.returnsBefore);
    const auto record = actual.cardRecord();
    const auto expectedRecord = expected.cardRecord();
    EXPECT_EQ(record->getNumber(), expectedRecord->getNumber());
    EXPECT_EQ(record->getLoyaltySystemType(), expectedRecord->getLoyaltySystemType());
    EXPECT_EQ(record->getCodeInternal(), expectedRecord->getCodeInternal());
    EXPECT_EQ(record->getPointsForSpend(), expectedRecord->getPointsForSpend());
    EXPECT_EQ(record->getPointsForEarn(), expectedRecord->getPointsForEarn());
    EXPECT_EQ(record->getBonusBalance(), expectedRecord->getBonusBalance());
    EXPECT_EQ(record->getCard()->getClient()->getName(),
              expectedRecord->getCard()->getClient()->getName());
}

} // namespace

TEST_F(SuspendTest, aRestoredCheckIsTheSuspendedOneInEverything)
{
    loyalty->discounts = {{1, 30.123}, {2, 1.0}};
    loyalty->awards = {{1, 8.5}};
    loyalty->spendable = 50.005;
    openReady();
    desk->choosePoints(PointsChoice::sum(40'00));
    desk->tender(1000'00);
    const Check before = desk->current();
    const QString id = desk->suspend();
    EXPECT_FALSE(desk->hasCheck());
    EXPECT_EQ(messages(), 0);

    restart();
    desk->restore(id);
    expectSame(desk->current(), before);
    EXPECT_EQ(loyalty->calls, QStringList{u"restore"_s});
    EXPECT_EQ(session.getDocument(), desk->current().document);
}

TEST_F(SuspendTest, theConfirmationAfterARestoreIsTheSameToTheByte)
{
    const tests::StoppedClock clock(QDateTime(QDate(2026, 3, 5), QTime(14, 20, 31)));
    loyalty->discounts = {{1, 30.0}};
    loyalty->spendable = 50;
    const auto payloadOf = [this](bool interrupted) {
        openReady();
        desk->choosePoints(PointsChoice::all());
        if (interrupted) {
            desk->suspend();
            restart();
            desk->restore(u"last"_s);
        }
        desk->close();
        return payloads().last();
    };
    const QString straight = payloadOf(false);
    EXPECT_EQ(payloadOf(true), straight);
    EXPECT_TRUE(straight.contains(u"used 30.00 used 50.00"_s));
}

TEST_F(SuspendTest, aRestoredCheckCanBeRestoredAgainAfterACrash)
{
    openReady();
    desk->suspend();
    restart();
    desk->restore(u"last"_s);
    // a process that dies runs no destructor; this one's runs when all is over
    const std::unique_ptr<till::CashDesk> died = std::move(desk);
    desk = std::make_unique<till::CashDesk>(*loyalty, store, session);
    desk->restore(u"last"_s);
    EXPECT_TRUE(desk->close().confirmed);
    EXPECT_EQ(messages(), 1);
    EXPECT_EQ(refusalOf([&] { desk->restore(u"last"_s); }), u"There is no suspended check."_s);
}

TEST_F(SuspendTest, leavingKeepsARestoredCheckSuspended)
{
    openReady();
    const QString id = desk->suspend();
    desk->restore(id);
    desk->leave();
    EXPECT_EQ(desk->takeNotices(), QStringList{u"Check %1 stays suspended."_s.arg(id)});
    EXPECT_EQ(store.list().first().state, u"suspended"_s);
}

TEST_F(SuspendTest, anAbandonedRestoredCheckIsGone)
{
    openReady();
    const QString id = desk->suspend();
    desk->restore(id);
    desk->abandon();
    EXPECT_EQ(refusalOf([&] { desk->restore(id); }),
              u"There is no suspended check %1; look at the list of checks."_s.arg(id));
    EXPECT_EQ(messages(), 0);
}

TEST_F(SuspendTest, onlyAReadyCheckIsSuspended)
{
    const QString refusal = u"A check is suspended only after a successful request; request first, "
                            "or close it."_s;
    desk->openSale(twoLines());
    EXPECT_EQ(refusalOf([&] { desk->suspend(); }), refusal);
    ASSERT_TRUE(desk->presentCard(u"2200"_s));
    EXPECT_EQ(refusalOf([&] { desk->suspend(); }), refusal);
    ASSERT_TRUE(desk->request());
    desk->changeQuantity(1, 1000);
    EXPECT_EQ(refusalOf([&] { desk->suspend(); }), refusal);
    loyalty->answers = false;
    EXPECT_FALSE(desk->request());
    EXPECT_EQ(refusalOf([&] { desk->suspend(); }), refusal);
    EXPECT_TRUE(desk->hasCheck());
}

TEST_F(SuspendTest, aRestoredCheckMayBeSuspendedAgain)
{
    openReady();
    const QString id = desk->suspend();
    desk->restore(id);
    desk->tender(300'00);
    EXPECT_EQ(desk->suspend(), id);
    desk->restore(id);
    EXPECT_EQ(desk->current().tenderedKopecks, 300'00);
}

TEST_F(SuspendTest, pointsAreChosenAfterARestoreWithoutANewRequest)
{
    loyalty->spendable = 50;
    openReady();
    desk->suspend();
    restart();
    desk->restore(u"last"_s);
    EXPECT_EQ(desk->choosePoints(PointsChoice::all()), 50'00);
    EXPECT_FALSE(loyalty->calls.contains(u"request"_s));
}

TEST_F(SuspendTest, aSystemThatDoesNotRestoreLeavesTheCheckSuspended)
{
    openReady();
    desk->suspend();
    loyalty->onRestore = [] { throw std::runtime_error("no state"); };
    EXPECT_EQ(refusalOf([&] { desk->restore(u"last"_s); }),
              u"The loyalty system does not restore its state (no state); the check stays "
              "suspended."_s);
    EXPECT_FALSE(desk->hasCheck());
    loyalty->onRestore = nullptr;
    desk->restore(u"last"_s);
    EXPECT_TRUE(desk->close().confirmed);
}

TEST_F(SuspendTest, bytesThatAreNoCheckAreRefused)
{
    openReady();
    const auto decode = [](const QByteArray& bytes) {
        return till::checkcodec::decode(bytes, u"c1"_s);
    };
    const QByteArray good = till::checkcodec::encode(desk->current());
    expectSame(decode(good), desk->current());
    expectSame(decode(storedform::asVersion1(good)), desk->current());
    const QString damaged =
        u"The stored check c1 is damaged; look for it in a copy of the database."_s;
    const QByteArray old = storedform::asVersion1(good);
    for (qsizetype length = 0; length < old.size(); ++length) {
        EXPECT_EQ(refusalOf([&] { decode(old.first(length)); }), damaged)
            << "cut to " << length << " of " << old.size();
    }
    EXPECT_EQ(refusalOf([&] { decode(old + 'x'); }), damaged);
    for (qsizetype length = 0; length < good.size(); ++length) {
        EXPECT_EQ(refusalOf([&] { decode(good.first(length)); }), damaged)
            << "cut to " << length << " of " << good.size();
    }
    EXPECT_EQ(refusalOf([&] { decode(good + 'x'); }), damaged);
    const QByteArray newer = storedform::withVersion(good, storedform::versionOf(good) + 1);
    EXPECT_EQ(refusalOf([&] { decode(newer); }),
              u"The stored check c1 was written by a newer till; use that one."_s);
}
