// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a till needs to hand over a long queue does not grow with it.

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "tests/scenario/store/proofsize.h"
#include "tests/scenario/store/storeshop.h"

#include <QProcess>

namespace {

constexpr int few = 1000;

class HandOverMemory : public StoreShop
{
protected:
    /// Makes one waiting check of the queue many of them, each with an identifier of its own.
    void multiply(int checks) const
    {
        poshost::Database database(path(u"till.sqlite"_s));
        poshost::Transaction transaction(database);
        const QString counted = u"WITH RECURSIVE counted(n) AS (SELECT 2 UNION ALL SELECT n + 1 "
                                "FROM counted WHERE n < %1) "_s.arg(checks);
        for (const QString& insert :
             {u"INSERT INTO queue_messages (id, queue, account_id, extra, state, steps, lane, "
              "created_at) SELECT n, queue, account_id, extra, state, steps, n, created_at "
              "FROM counted, queue_messages WHERE id = 1"_s,
              u"INSERT INTO queue_bodies (message_id, headers, urls, payload, digest) SELECT n, "
              "headers, urls, payload, digest FROM counted, queue_bodies WHERE message_id = 1"_s,
              u"INSERT INTO checks (id, number, state, type, data, message_id, updated_at, "
              "change_number) SELECT id || '-' || n, n, state, type, data, n, updated_at, n "
              "FROM counted, checks WHERE message_id = 1"_s}) {
            database.execute(counted + insert);
        }
        transaction.commit();
    }

    /// @return the most memory that handing all of it over took, in KiB
    long peakOfDelivery() const
    {
        QProcess process;
        process.setWorkingDirectory(folder());
        process.start(QStringLiteral(ORVA_PEAK), {path(u"peak"_s), QStringLiteral(ORVA_TILL),
                                                  u"--quiet"_s, u"queue"_s, u"deliver"_s});
        EXPECT_TRUE(process.waitForFinished(-1)); // a million takes its time
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
        return readFile(u"peak"_s).trimmed().toLong();
    }

    long peakWith(int checks)
    {
        cluster.kill();
        sellMany(1);
        cluster.start();
        multiply(checks);
        const long peak = peakOfDelivery();
        EXPECT_EQ(stored(u"checks"_s), QString::number(checks));
        cluster.sql(u"TRUNCATE orva.checks CASCADE"_s);
        for (const QString& companion : {u""_s, u"-wal"_s, u"-shm"_s}) {
            QFile::remove(path(u"till.sqlite"_s + companion));
        }
        return peak;
    }
};

TEST_F(HandOverMemory, IsFlatInWhatWaits)
{
    const long small = peakWith(few);
    const int many = sized(1'000'000, 5000);
    const long large = peakWith(many);
    printFigure(u"handing over takes %1 KiB with %2 waiting, %3 KiB with %4"_s.arg(small)
                    .arg(few)
                    .arg(large)
                    .arg(many));
    EXPECT_GT(small, 0);
    EXPECT_LT(large, small + 4096);
}

} // namespace
