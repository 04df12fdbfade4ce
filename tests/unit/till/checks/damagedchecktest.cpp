// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Any bit of what is stored of a suspended check may be another one: the check is told to be
// damaged, or is as good as before.

#include "host/database/statement.h"
#include "tests/support/damage.h"
#include "tests/unit/till/storedform.h"
#include "tests/unit/till/tilltest.h"
#include "till/checks/checkcodec.h"
#include "till/checks/checksoundness.h"
#include "till/screen/checkview.h"

using namespace Qt::StringLiterals;
using tests::refusalOf;
using tests::damage::flipped;
using tests::damage::withFlippedBit;
using till::Check;
using till::PointsChoice;

namespace {

class DamagedCheckTest : public tests::TillTest
{
protected:
    DamagedCheckTest()
    {
        tests::damage::allow(*database);
        loyalty->discounts = {{1, 30.0}};
        loyalty->awards = {{1, 8.5}};
        loyalty->spendable = 50;
        openReady();
        desk->choosePoints(PointsChoice::sum(20'00));
        desk->tender(300'00);
        suspended = till::checkcodec::encode(desk->current());
        id = desk->suspend();
    }

    void set(const QString& column, const QVariant& value)
    {
        poshost::Statement statement(*database, u"UPDATE checks SET %1 = ?"_s.arg(column));
        statement.bind(value).execute();
    }
    QVariant get(const QString& column)
    {
        poshost::Statement statement(*database, u"SELECT %1 FROM checks"_s.arg(column));
        EXPECT_TRUE(statement.next());
        return statement.value(0);
    }

    /// Takes the check up and works with it as far as it goes, and leaves it suspended.
    /// @return the refusal, empty when there is none
    QString workWithIt(const QString& which)
    {
        try {
            desk->restore(which);
            desk->availablePoints();
            till::checkview::forCashier(desk->current(), 0);
            till::checkview::slip(desk->current());
            desk->changeQuantity(desk->current().lines.first().position, 1000);
            desk->request();
            desk->choosePoints(PointsChoice::all());
        } catch (const till::Failure& failure) {
            desk->leave();
            return failure.text();
        }
        desk->leave();
        return {};
    }

    QString damagedText(const QString& name) const { return till::checkcodec::damagedText(name); }

    QByteArray suspended;
    QString id;
};

} // namespace

TEST_F(DamagedCheckTest, everyBitOfItsContentIsMissed)
{
    const QVariantList contents = flipped(get(u"data"_s));
    ASSERT_GT(contents.size(), 4000);
    const QString newer =
        u"The stored check %1 was written by a newer till; use that one."_s.arg(id);
    int newerOnes = 0;
    for (qsizetype bit = 0; bit < contents.size(); ++bit) {
        set(u"data"_s, contents.at(bit));
        const QString refusal = refusalOf([this] { desk->restore(id); });
        ASSERT_TRUE(refusal == damagedText(id) || refusal == newer) << "bit " << bit;
        newerOnes += refusal == newer ? 1 : 0;
        ASSERT_FALSE(desk->hasCheck()) << "bit " << bit;
    }
    // each bit of the format's version that is not set there
    const auto version = quint32(tests::storedform::versionOf(suspended));
    EXPECT_EQ(newerOnes, 32 - qPopulationCount(version));
    set(u"data"_s, suspended);
    desk->restore(id);
    EXPECT_EQ(till::checkcodec::encode(desk->current()), suspended);
}

TEST_F(DamagedCheckTest, aContentWithoutADigestIsRefusedOrCanBeWorkedWith)
{
    const QByteArray old = tests::storedform::asVersion1(suspended);
    set(u"data"_s, old);
    ASSERT_EQ(workWithIt(id), QString());
    int refused = 0;
    for (qsizetype bit = 0; bit < old.size() * 8; ++bit) {
        set(u"data"_s, withFlippedBit(old, bit));
        const QString refusal = workWithIt(id);
        refused += refusal.isEmpty() ? 0 : 1;
        desk->takeNotices();
        ASSERT_FALSE(desk->hasCheck()) << "bit " << bit;
        ASSERT_EQ(store.list().first().state, u"suspended"_s) << "bit " << bit;
    }
    EXPECT_GT(refused, old.size()) << "hardly anything is looked at";
}

TEST_F(DamagedCheckTest, aBitOfAnyOtherColumnIsToldOrHarmless)
{
    for (const QString& column :
         {u"id"_s, u"number"_s, u"state"_s, u"type"_s, u"updated_at"_s, u"change_number"_s}) {
        const QVariant good = get(column);
        const QVariantList values = flipped(good);
        ASSERT_GE(values.size(), 64) << column.toStdString();
        for (const QVariant& value : values) {
            set(column, value);
            const std::string where = (column + u" = "_s + value.toString()).toStdString();
            const QList<till::CheckRow> rows = store.list();
            ASSERT_EQ(rows.size(), 1) << where;
            EXPECT_THROW(store.findSale(u"last"_s), till::Failure) << where;
            const bool isHarmless = column == u"updated_at"_s || column == u"change_number"_s;
            for (const QString& which : {id, u"last"_s}) {
                const QString refusal = workWithIt(which);
                if (isHarmless) {
                    EXPECT_EQ(refusal, QString()) << where;
                } else if (column == u"id"_s && which == id) {
                    EXPECT_TRUE(refusal.startsWith(u"There is no suspended check "_s)) << where;
                } else {
                    EXPECT_EQ(refusal, damagedText(rows.first().id)) << where;
                }
                desk->takeNotices();
            }
        }
        set(column, good);
    }
    EXPECT_EQ(workWithIt(id), QString());
}

TEST_F(DamagedCheckTest, twoLinesOfOnePositionAreUnsound)
{
    desk->restore(id);
    Check check = desk->current();
    ASSERT_TRUE(till::isSound(check));
    check.lines.append(check.lines.last());
    EXPECT_FALSE(till::isSound(check));
    ++check.lines.last().position;
    EXPECT_TRUE(till::isSound(check));
}

TEST_F(DamagedCheckTest, aDamagedSaleIsNotReturned)
{
    desk->restore(id);
    desk->close();
    const QVariant number = get(u"number"_s);
    set(u"number"_s, number.toLongLong() + 1);
    EXPECT_EQ(refusalOf([this] { desk->openReturn(returnOf(id, {{1, 1000}})); }), damagedText(id));
    EXPECT_EQ(refusalOf([this] { store.forEachClosed([](const Check&) {}); }), damagedText(id));
    set(u"number"_s, number);
    desk->openReturn(returnOf(id, {{1, 1000}}));
    EXPECT_TRUE(desk->hasCheck());
}

TEST_F(DamagedCheckTest, theNextCheckNumberIsANumberWhateverIsStored)
{
    const auto keep = [this](const QVariant& value) {
        poshost::Statement statement(*database, u"UPDATE settings SET value = ?"_s);
        statement.bind(value).execute();
    };
    for (const QVariant& value : flipped(QVariant(qint64(2)))) {
        keep(value);
        EXPECT_GE(store.takeNumber(), 1) << value.toString().toStdString();
    }
    for (const QVariant& value : {QVariant(u"x"_s), QVariant(), QVariant(-7), QVariant(0)}) {
        keep(value);
        EXPECT_EQ(store.takeNumber(), 2) << value.toString().toStdString();
        EXPECT_EQ(store.takeNumber(), 3) << value.toString().toStdString();
    }
}

TEST_F(DamagedCheckTest, aCheckOfAnotherLoyaltySystemIsNotRestored)
{
    class OtherSystem : public tests::FakeLoyalty
    {
    public:
        OtherSystem() { loyaltySystemType = 16; }
    };
    OtherSystem other;
    till::CashDesk otherDesk(other, store, session);
    EXPECT_EQ(refusalOf([&] { otherDesk.restore(id); }),
              u"Check %1 has no card of this loyalty system; restore it with the one that it was "
              "suspended with."_s.arg(id));
    EXPECT_FALSE(otherDesk.hasCheck());
    desk->restore(id);
    EXPECT_TRUE(desk->hasCheck());
}
