// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Tills as processes that pass a suspended check on through a store on a real PostgreSQL server.

#include "tests/scenario/store/proofsize.h"
#include "tests/scenario/store/storeshop.h"

#include <QElapsedTimer>
#include <QJsonObject>

namespace {

class SuspendedAtStore : public StoreShop
{
protected:
    void SetUp() override
    {
        StoreShop::SetUp();
        writeOther();
    }

    /// The settings of a second till beside those of the first.
    void writeOther() const
    {
        writeFile(u"other.toml"_s, readFile(u"orva.toml"_s)
                                       .replace(u"till.sqlite"_s, u"other.sqlite"_s)
                                       .replace(u"name = \"3\""_s, u"name = \"4\""_s));
    }

    std::unique_ptr<Program> startOther() const
    {
        return std::make_unique<Program>(QStringLiteral(ORVA_TILL),
                                         QStringList{u"--config"_s, u"other.toml"_s, u"work"_s},
                                         folder());
    }

    static void end(Program& till)
    {
        till.send(u"quit"_s);
        EXPECT_EQ(till.waitForEnd(), 0);
    }

    /// Opens a sale with points and leaves it. @return its identifier
    static QString leaveOne(Program& till)
    {
        expectOk(till.command(u"open sale.toml"_s));
        expectOk(till.command(u"points 20"_s));
        const QString answer = till.command(u"suspend --store"_s);
        expectOk(answer);
        return answer.section(u"Suspended: "_s, 1).section(u'\n', 0, 0);
    }
};

TEST_F(SuspendedAtStore, ACheckIsSuspendedAtOneTillAndClosedAtAnother)
{
    const auto first = startTill();
    const auto second = startOther();
    const QString id = leaveOne(*first);
    EXPECT_EQ(list({u"checks"_s}).first().toObject().value(u"state"_s).toString(), u"left"_s);
    expectOk(second->command(u"restore "_s + id));
    const QString refusal = first->command(u"restore "_s + id);
    EXPECT_TRUE(refusal.contains(u"error: "_s) && refusal.contains(u"till 4"_s))
        << qPrintable(refusal);
    expectOk(second->command(u"close"_s));
    expectOk(second->command(u"wait 30"_s));
    end(*first);
    end(*second);
    EXPECT_EQ(stored(u"checks"_s), u"1"_s);
    EXPECT_EQ(cluster.sql(u"SELECT till FROM orva.checks"_s), u"4"_s);
    EXPECT_EQ(cluster.sql(u"SELECT identifier FROM orva.messages"_s), id);
}

TEST_F(SuspendedAtStore, NothingIsLostWhenTheStoreGoesInTheMiddle)
{
    const auto first = startTill();
    const QString left = leaveOne(*first);
    cluster.kill();
    const QString refusal = first->command(u"restore "_s + left);
    EXPECT_TRUE(refusal.contains(u"error: "_s)) << qPrintable(refusal);
    // the session is gone since then, and so nothing of this can be in the store
    const QString here = leaveOne(*first);
    expectOk(first->command(u"restore "_s + here));
    expectOk(first->command(u"close"_s));
    cluster.start();
    expectOk(first->command(u"restore last"_s));
    expectOk(first->command(u"close"_s));
    expectOk(first->command(u"wait 30"_s));
    end(*first);
    EXPECT_EQ(stored(u"checks"_s), u"2"_s);
}

TEST_F(SuspendedAtStore, ACashierWaitsForASilentStoreNoLongerThanItsTime)
{
    writeStoreConfig(storeString(), u"timeout = 2\n"_s);
    const auto first = startTill();
    const QString id = leaveOne(*first);
    cluster.freeze();
    QElapsedTimer time;
    time.start();
    EXPECT_TRUE(first->command(u"restore "_s + id).contains(u"error: "_s));
    const qint64 restoring = time.restart();
    leaveOne(*first);
    const qint64 leaving = time.elapsed();
    cluster.thaw();
    printFigure(u"with a store that hangs and a time-out of 2 s: restoring %1 ms, opening and "
                "leaving a check %2 ms"_s.arg(restoring)
                    .arg(leaving));
    EXPECT_LT(restoring, 2500);
    EXPECT_LT(leaving, 4500);
    expectOk(first->command(u"restore "_s + id)); // as it was asked for before
    expectOk(first->command(u"close"_s));
    end(*first);
    EXPECT_EQ(cluster.sql(u"SELECT count(*) FROM orva.suspended WHERE settled_at IS NOT NULL"_s),
              u"1"_s);
}

} // namespace
