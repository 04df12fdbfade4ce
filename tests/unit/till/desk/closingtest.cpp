// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/core/basicexception.h"
#include "host/database/statement.h"
#include "tests/support/failingbroker.h"
#include "tests/unit/till/tilltest.h"
#include "till/screen/ledger.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <stdexcept>

using namespace Qt::StringLiterals;
using tests::refusalOf;
using till::Check;
using till::PointsChoice;

namespace {

class ClosingTest : public tests::TillTest
{
protected:
    QString stateOf(const QString& id)
    {
        for (const till::CheckRow& row : store.list()) {
            if (row.id == id) {
                return row.state;
            }
        }
        return {};
    }
};

} // namespace

TEST_F(ClosingTest, theCheckAndItsMessageAreStoredTogether)
{
    const Check closed = sell();
    EXPECT_EQ(stateOf(closed.id()), u"closed"_s);
    EXPECT_EQ(payloads().size(), 1);
    EXPECT_FALSE(store.isDelivered(closed.id()));
    EXPECT_FALSE(desk->hasCheck());
    EXPECT_EQ(session.getDocument(), nullptr);
    const Check stored = store.findSale(closed.id());
    EXPECT_EQ(stored.lines, closed.lines);
    EXPECT_TRUE(stored.confirmed);
}

TEST_F(ClosingTest, aFailingQueueLeavesTheCheckOpenAndTheRetrySendsTheSameBytes)
{
    tests::FailingBroker failing(database);
    const tests::InSingleton<DBQueueBroker> inPlace(&failing);
    loyalty->discounts = {{1, 30.0}};
    loyalty->spendable = 50;
    openReady();
    desk->choosePoints(PointsChoice::all());
    const QString id = desk->current().id();

    EXPECT_EQ(refusalOf([&] { desk->close(); }),
              u"The check is not closed (Диск переполнен); close it again."_s);
    EXPECT_EQ(stateOf(id), u"open"_s);
    EXPECT_EQ(messages(), 0);
    EXPECT_EQ(loyalty->calls.mid(loyalty->calls.size() - 3),
              (QStringList{u"commit"_s, u"rollback"_s, u"restore"_s}));

    const Check closed = desk->close();
    EXPECT_EQ(closed.id(), id);
    ASSERT_EQ(failing.tried.size(), 2);
    EXPECT_EQ(failing.tried.at(1), failing.tried.at(0));
    const QString payload = failing.tried.at(0).value(u"payload"_s).toString();
    EXPECT_TRUE(payload.contains(u"used 30.00 used 50.00 paid 150"_s)) << payload.toStdString();
    EXPECT_EQ(payloads(), QStringList{payload});
    EXPECT_EQ(stateOf(id), u"closed"_s);
}

TEST_F(ClosingTest, aSystemThatDoesNotConfirmLeavesTheCheckOpen)
{
    openReady();
    loyalty->commits = false;
    EXPECT_EQ(refusalOf([&] { desk->close(); }),
              u"The check is not closed (the loyalty system does not confirm it); close it "
              "again."_s);
    loyalty->commits = true;
    EXPECT_TRUE(desk->close().confirmed);
    EXPECT_EQ(messages(), 1);
}

TEST_F(ClosingTest, aSystemThatCannotRestoreIsAskedAgain)
{
    tests::FailingBroker failing(database);
    const tests::InSingleton<DBQueueBroker> inPlace(&failing);
    openReady();
    loyalty->onRestore = [] { throw std::runtime_error("no state"); };
    refusalOf([&] { desk->close(); });
    EXPECT_EQ(desk->takeNotices(),
              QStringList{u"The loyalty system does not restore its state (no state)."_s});
    loyalty->calls.clear();
    EXPECT_TRUE(desk->close().confirmed);
    EXPECT_EQ(loyalty->calls, (QStringList{u"request"_s, u"commit"_s, u"clear"_s}));
}

TEST_F(ClosingTest, aLockedDatabaseLeavesTheCheckOpen)
{
    const auto impatient =
        QSharedPointer<poshost::Database>::create(folder.file(u"till.sqlite"_s), 0);
    DBQueueBroker impatientBroker(impatient);
    const tests::InSingleton<DBQueueBroker> inPlace(&impatientBroker);
    till::CheckStore impatientStore(impatient);
    till::CashDesk other(*loyalty, impatientStore, session);
    other.openSale(twoLines());
    ASSERT_TRUE(other.presentCard(u"2200"_s));
    ASSERT_TRUE(other.request());

    database->execute(u"BEGIN IMMEDIATE"_s);
    const QString refusal = refusalOf([&] { other.close(); });
    database->execute(u"ROLLBACK"_s);
    EXPECT_TRUE(refusal.startsWith(u"The check is not closed ("_s)) << refusal.toStdString();
    EXPECT_EQ(messages(), 0);
    EXPECT_TRUE(other.close().confirmed);
    EXPECT_EQ(messages(), 1);
}

TEST_F(ClosingTest, aCheckClosedElsewhereIsNotClosedTwice)
{
    openReady();
    const QString id = desk->current().id();
    poshost::Statement(*database, u"UPDATE checks SET state = 'closed'"_s).execute();
    const QString refusal = refusalOf([&] { desk->close(); });
    EXPECT_EQ(refusal, u"Check %1 has been closed or abandoned by another till meanwhile; "
                       "abandon it here and open a new one."_s.arg(id));
    EXPECT_EQ(messages(), 0);
}

TEST_F(ClosingTest, aLedgerThatCannotBeReadLeavesTheDatabaseForTheNext)
{
    sell();
    const auto failing = [](const auto& take) {
        static_cast<void>(take);
        throw std::runtime_error("the source fails");
    };
    EXPECT_THROW(till::Ledger(failing, *database), std::runtime_error);
    EXPECT_NO_THROW(database->execute(u"BEGIN IMMEDIATE"_s)) << "a transaction was left open";
    database->execute(u"ROLLBACK"_s);
    QString csv;
    till::Ledger(store, *database).writeCsv([&csv](const QString& part) { csv += part; });
    EXPECT_EQ(csv.count(u'\n'), 2) << csv.toStdString();
}

TEST_F(ClosingTest, theLedgerListsConfirmedChecksByIdentifier)
{
    loyalty->awards = {{1, 10.0}};
    loyalty->spendable = 46;
    const Check first = sell(PointsChoice::all());
    desk->openSale(twoLines());
    desk->close(); // without a card
    const Check second = sell();

    QStringList expected{u"%1,****0017,8.00,46.00,0.00,0.00"_s.arg(first.id()),
                         u"%1,****0017,10.00,0.00,0.00,0.00"_s.arg(second.id())};
    expected.sort();
    const till::Ledger ledger(store, *database);
    const auto whole = [&](auto form) {
        QString text;
        form([&text](const QString& part) { text += part; });
        return text;
    };
    EXPECT_EQ(whole([&](const auto& write) { ledger.writeCsv(write); }),
              u"check,card,earned,spent,givenBack,takenBack\n"_s + expected.join(u'\n') + u'\n');
    const QString table = whole([&](const auto& write) { ledger.writeTable(80, write); });
    EXPECT_TRUE(table.contains(u"18.00  46.00"_s)) << table.toStdString();
    const QString json = whole([&](const auto& write) { ledger.writeJson(write); });
    EXPECT_EQ(QJsonDocument::fromJson(json.toUtf8()).array().size(), 2) << json.toStdString();
    EXPECT_EQ(json, QString::fromUtf8(QJsonDocument::fromJson(json.toUtf8()).toJson()));
    EXPECT_TRUE(json.contains(u"\"earned\": \"8.00\""_s)) << json.toStdString();
    EXPECT_FALSE(json.contains(u"2200000000017"_s));
}
