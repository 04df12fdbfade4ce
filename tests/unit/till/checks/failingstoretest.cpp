// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What is left of a check when the database refuses: everything, on the screen and in the file.

#include "host/database/statement.h"
#include "tests/unit/till/tilltest.h"
#include "till/checks/checkcodec.h"

#include <stdexcept>

using namespace Qt::StringLiterals;
using tests::refusalOf;
using till::PointsChoice;

namespace {

/// What the database may refuse with, as another program does it.
struct Obstacle
{
    const char* name;
    void (*raise)(poshost::Database& other);
    void (*remove)(poshost::Database& other);
    bool readingFails;
};

void PrintTo(const Obstacle& obstacle, std::ostream* out)
{
    *out << obstacle.name;
}

class FailingStoreTest : public tests::TillTest, public ::testing::WithParamInterface<Obstacle>
{
protected:
    FailingStoreTest()
    {
        loyalty->discounts = {{1, 30.0}};
        loyalty->spendable = 50;
        desk = std::make_unique<till::CashDesk>(*loyalty, impatientStore, session);
    }
    ~FailingStoreTest() override { desk.reset(); }

    QStringList states()
    {
        QStringList found;
        for (const till::CheckRow& row : store.list()) {
            found.append(row.id + u' ' + row.state);
        }
        return found;
    }

    /// The work is refused with a sentence and nothing is changed by that; without the obstacle it
    /// is done.
    template <typename Work>
    void expectRefused(const Work& work)
    {
        const QStringList before = states();
        const bool wasOpen = desk->hasCheck();
        const QByteArray check = wasOpen ? till::checkcodec::encode(desk->current()) : QByteArray();

        GetParam().raise(*database);
        const QString refusal = refusalOf(work);
        GetParam().remove(*database);

        EXPECT_TRUE(refusal.contains(u"Database "_s)) << refusal.toStdString();
        EXPECT_EQ(states(), before);
        ASSERT_EQ(desk->hasCheck(), wasOpen);
        if (wasOpen) {
            EXPECT_EQ(till::checkcodec::encode(desk->current()), check);
            EXPECT_EQ(session.getDocument(), desk->current().document);
        }
        EXPECT_EQ(desk->takeNotices(), QStringList());
        EXPECT_NO_THROW(work());
    }

    const QSharedPointer<poshost::Database> impatient =
        QSharedPointer<poshost::Database>::create(folder.file(u"till.sqlite"_s), 0);
    DBQueueBroker impatientBroker{impatient};
    tests::InSingleton<DBQueueBroker> impatientInPlace{&impatientBroker};
    till::CheckStore impatientStore{impatient};
};

const Obstacle obstacles[] = {
    {"locked", [](poshost::Database& other) { other.execute(u"BEGIN IMMEDIATE"_s); },
     [](poshost::Database& other) { other.execute(u"ROLLBACK"_s); }, false},
    {"without its checks",
     [](poshost::Database& other) { other.execute(u"ALTER TABLE checks RENAME TO elsewhere"_s); },
     [](poshost::Database& other) { other.execute(u"ALTER TABLE elsewhere RENAME TO checks"_s); },
     true},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Database, FailingStoreTest, ::testing::ValuesIn(obstacles));

TEST_P(FailingStoreTest, noSaleIsOpened)
{
    expectRefused([this] { desk->openSale(twoLines()); });
    EXPECT_TRUE(desk->hasCheck());
}

TEST_P(FailingStoreTest, noReturnIsOpened)
{
    const QString sale = sell().id();
    expectRefused([&] { desk->openReturn(returnOf(sale, {{1, 1000}})); });
    EXPECT_TRUE(desk->current().isReturn());
}

TEST_P(FailingStoreTest, aReturnIsNotAskedAbout)
{
    const QString sale = sell().id();
    desk->openReturn(returnOf(sale, {{1, 1000}}));
    if (GetParam().readingFails) {
        GetParam().raise(*database);
        EXPECT_TRUE(refusalOf([this] { desk->request(); }).contains(u"Database "_s));
        GetParam().remove(*database);
    }
    EXPECT_FALSE(desk->request());
}

TEST_P(FailingStoreTest, aCheckIsNotSuspended)
{
    openReady();
    desk->choosePoints(PointsChoice::all());
    desk->tender(200'00);
    const QString id = desk->current().id();
    expectRefused([this] { desk->suspend(); });
    EXPECT_EQ(states(), QStringList{id + u" suspended"_s});
    EXPECT_FALSE(desk->hasCheck());
}

TEST_P(FailingStoreTest, aCheckIsNotRestored)
{
    openReady();
    const QString id = desk->suspend();
    if (GetParam().readingFails) {
        expectRefused([&] { desk->restore(id); });
    } else {
        desk->restore(id); // needs no right to write
    }
    EXPECT_EQ(desk->current().id(), id);
    EXPECT_EQ(states(), QStringList{id + u" suspended"_s});
}

TEST_P(FailingStoreTest, aCheckIsNotAbandoned)
{
    openReady();
    const QString id = desk->current().id();
    expectRefused([this] { desk->abandon(); });
    EXPECT_EQ(states(), QStringList{id + u" abandoned"_s});
    EXPECT_FALSE(desk->hasCheck());
}

TEST_P(FailingStoreTest, aCheckThatCouldNotBeAbandonedIsClosed)
{
    openReady();
    GetParam().raise(*database);
    refusalOf([this] { desk->abandon(); });
    GetParam().remove(*database);
    EXPECT_TRUE(desk->close().confirmed);
    EXPECT_EQ(messages(), 1);
}

TEST_P(FailingStoreTest, leavingIsRefusedAndSaysNothingThatIsNotSo)
{
    openReady();
    const QString id = desk->current().id();
    expectRefused([this] { desk->leave(); });
    EXPECT_EQ(states(), QStringList{id + u" abandoned"_s});
    EXPECT_EQ(desk->takeNotices(),
              QStringList{u"Check %1 was still open and is abandoned."_s.arg(id)});
}

TEST_P(FailingStoreTest, aCheckIsNotClosed)
{
    openReady();
    desk->choosePoints(PointsChoice::all());
    const QString id = desk->current().id();
    expectRefused([this] { desk->close(); });
    EXPECT_EQ(states(), QStringList{id + u" closed"_s});
    EXPECT_EQ(messages(), 1);
}

TEST_P(FailingStoreTest, aDeskThatEndsLeavesNoDocumentBehind)
{
    openReady();
    const QString id = desk->current().id();
    GetParam().raise(*database);
    desk.reset();
    GetParam().remove(*database);
    EXPECT_EQ(session.getDocument(), nullptr);
    EXPECT_EQ(states(), QStringList{id + u" open"_s});
}

namespace {

using LayingDownTest = tests::TillTest;

} // namespace

TEST_F(LayingDownTest, anAbandonedCheckThatAnotherTillHasClosedIsOnlyTakenOffTheDesk)
{
    openReady();
    const QString id = desk->current().id();
    poshost::Statement(*database, u"UPDATE checks SET state = 'closed'"_s).execute();
    EXPECT_EQ(refusalOf([this] { desk->suspend(); }),
              u"Check %1 has been closed or abandoned by another till meanwhile; abandon it here "
              "and open a new one."_s.arg(id));
    EXPECT_TRUE(desk->hasCheck());
    desk->abandon();
    EXPECT_FALSE(desk->hasCheck());
    EXPECT_EQ(
        desk->takeNotices(),
        QStringList{u"Check %1 has been closed or abandoned by another till meanwhile."_s.arg(id)});
    EXPECT_EQ(store.list().first().state, u"closed"_s);
}

TEST_F(LayingDownTest, aSystemThatFailsWhileItLaysDownDoesNotBringTheCheckBack)
{
    openReady();
    const QString id = desk->current().id();
    loyalty->onRollback = [] { throw std::runtime_error("no way back"); };
    desk->abandon();
    EXPECT_FALSE(desk->hasCheck());
    EXPECT_EQ(desk->takeNotices(),
              QStringList{u"The loyalty system does not lay the check down (no way back)."_s});
    EXPECT_EQ(store.list().first().state, u"abandoned"_s);
}

TEST_F(LayingDownTest, aSystemThatCannotTellThePointsStopsNoSale)
{
    loyalty->spendable = 50;
    openReady();
    loyalty->onPoints = [] { throw std::runtime_error("no points"); };
    EXPECT_EQ(desk->availablePoints(), 0);
    EXPECT_EQ(desk->choosePoints(PointsChoice::all()), 0);
    EXPECT_EQ(desk->takeNotices().size(), 2);
    EXPECT_TRUE(desk->close().confirmed);
}
