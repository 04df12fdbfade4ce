// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Which check is the last one, when the clock was put back meanwhile.

#include "tests/unit/till/tilltest.h"

using namespace Qt::StringLiterals;
using tests::StoppedClock;
using till::Check;

namespace {

class LastCheckTest : public tests::TillTest
{
protected:
    /// Does something when the till's clock shows that full hour.
    template <typename Work>
    auto at(int hour, const Work& work)
    {
        const StoppedClock clock(QDateTime(QDate(2026, 3, 5), QTime(hour, 0)));
        return work();
    }
    QString sellAt(int hour)
    {
        return at(hour, [this] { return sell().id(); });
    }
};

} // namespace

TEST_F(LastCheckTest, theLastSaleIsTheOneClosedLast)
{
    sellAt(15);
    const QString closedLast = sellAt(9);
    EXPECT_EQ(store.findSale(u"last"_s).id(), closedLast);
    EXPECT_EQ(store.findClosed(u"last"_s).id(), closedLast);

    desk->openReturn(returnOf(u"last"_s, {{1, 1000}}));
    EXPECT_EQ(desk->current().document->getSaleDocumentId(), closedLast);
}

TEST_F(LastCheckTest, aReturnIsTheLastCheckAndNotTheLastSale)
{
    const QString sale = sellAt(15);
    const QString taken = at(9, [&] {
        desk->openReturn(returnOf(sale, {{1, 1000}}));
        return desk->close().id();
    });
    EXPECT_EQ(store.findClosed(u"last"_s).id(), taken);
    EXPECT_EQ(store.findSale(u"last"_s).id(), sale);
}

TEST_F(LastCheckTest, whatWasOpenedFirstAndClosedLastIsTheLast)
{
    const QString suspended = at(15, [this] {
        openReady();
        return desk->suspend();
    });
    sellAt(12);
    at(9, [&] {
        desk->restore(suspended);
        desk->close();
    });
    EXPECT_EQ(store.findSale(u"last"_s).id(), suspended);
}

TEST_F(LastCheckTest, theOneSuspendedLastIsRestored)
{
    const auto suspend = [this] {
        openReady();
        return desk->suspend();
    };
    const QString first = at(15, suspend);
    const QString second = at(9, suspend);
    desk->restore(u"last"_s);
    EXPECT_EQ(desk->current().id(), second);
    desk->abandon();
    desk->restore(u"last"_s);
    EXPECT_EQ(desk->current().id(), first);
}

TEST_F(LastCheckTest, theListBeginsWithTheLastChange)
{
    QStringList expected{sellAt(15), sellAt(9), sellAt(12)};
    const auto ids = [this] {
        QStringList found;
        for (const till::CheckRow& row : store.list()) {
            found.prepend(row.id);
        }
        return found;
    };
    EXPECT_EQ(ids(), expected);
    const QString suspended = at(14, [this] {
        openReady();
        return desk->suspend();
    });
    expected.append(suspended);
    expected.append(sellAt(8));
    EXPECT_EQ(ids(), expected);
    at(7, [&] {
        desk->restore(suspended);
        desk->close();
    });
    expected.removeOne(suspended);
    EXPECT_EQ(ids(), expected << suspended);
}

TEST_F(LastCheckTest, theListIsReadPageByPage)
{
    const QStringList sold{sellAt(15), sellAt(9), sellAt(12)};
    const auto ids = [this](int most, const QString& before) {
        QStringList found;
        for (const till::CheckRow& row : store.list(most, before)) {
            found.append(row.id);
        }
        return found;
    };
    EXPECT_EQ(ids(2, {}), QStringList({sold.at(2), sold.at(1)}));
    EXPECT_EQ(ids(2, sold.at(1)), QStringList({sold.at(0)}));
    EXPECT_EQ(ids(2, sold.at(0)), QStringList());
    EXPECT_EQ(tests::refusalOf([&] { ids(2, u"nowhere"_s); }),
              u"There is no check \"nowhere\"; look at the list of checks."_s);
}
