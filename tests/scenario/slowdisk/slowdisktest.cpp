// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/environmentvariable.h"
#include "tests/support/shop.h"

#include <QElapsedTimer>

#include <algorithm>
#include <iostream>

using namespace Qt::StringLiterals;

namespace {

constexpr int syncMilliseconds = 50;
constexpr int mostSyncs = 2;

/// A till on a disk on which each sync takes 50 ms more.
class SlowDisk : public Shop
{
protected:
    /// From now on for each program that is started.
    void slowDown()
    {
        preload.emplace("LD_PRELOAD", ORVA_SLOW_SYNC);
        log.emplace("ORVA_SYNC_LOG", path(u"syncs"_s).toUtf8());
        duration.emplace("ORVA_SYNC_MILLISECONDS", QByteArray::number(syncMilliseconds));
    }

    /// How often the cashier has waited for the disk.
    qint64 syncs() const { return QFileInfo(path(u"syncs"_s)).size(); }

private:
    std::optional<EnvironmentVariable> preload;
    std::optional<EnvironmentVariable> log;
    std::optional<EnvironmentVariable> duration;
};

} // namespace

TEST_F(SlowDisk, theCashierWaitsForAtMostTwoSyncsAtClosing)
{
    slowDown();
    const std::unique_ptr<Program> working = startTill();
    constexpr int checks = 6;
    qint64 mostCounted = 0;
    qint64 longest = 0;
    for (int i = 0; i < checks; ++i) {
        ASSERT_TRUE(working->command(u"open sale.toml"_s).endsWith(u"ok\n"_s));
        ASSERT_TRUE(working->command(u"points 1"_s).endsWith(u"ok\n"_s));
        const qint64 before = syncs();
        QElapsedTimer closing;
        closing.start();
        ASSERT_TRUE(working->command(u"close"_s).endsWith(u"ok\n"_s));
        longest = std::max(longest, closing.elapsed());
        mostCounted = std::max(mostCounted, syncs() - before);
    }
    std::cout << "closing on a slow disk: " << mostCounted << " syncs of " << syncMilliseconds
              << " ms each, at most " << longest << " ms\n";
    EXPECT_GE(mostCounted, 1) << "a closed check is on the disk";
    EXPECT_LE(mostCounted, mostSyncs);
    // beside them the cashier waits for a sync of the delivery's under way and what is computed
    EXPECT_LT(longest, (mostSyncs + 1) * syncMilliseconds + 500);
}
