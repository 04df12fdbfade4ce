// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Returns at any till of a shop: tills as processes, the store on a real PostgreSQL server.

#include "tests/scenario/store/proofsize.h"
#include "tests/scenario/store/storeshop.h"
#include "tests/support/tillsettings.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

/// Till 3 works with orva.toml, till 4 with its own file and database.
class ReturnsAtTills : public StoreShop
{
protected:
    void SetUp() override
    {
        StoreShop::SetUp();
        tests::TillSettings settings;
        settings.server = address;
        settings.timeoutSeconds = 5;
        settings.plugin = QStringLiteral(ORVA_PLUGIN);
        settings.name = u"4"_s;
        settings.database = u"fourth.sqlite"_s;
        // waits long enough for a machine that is busy
        const QString own = readFile(u"orva.toml"_s);
        writeFile(u"orva.toml"_s, own + u"timeout = 10\n"_s);
        writeFile(u"fourth.toml"_s,
                  settings.toml() + own.mid(own.indexOf(u"[store]"_s)) + u"timeout = 10\n"_s);
        done({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"30"_s});
        sale = list({u"checks"_s}).first().toObject().value(u"id"_s).toString();
        ASSERT_FALSE(sale.isEmpty());
        writeReturn(u"one.toml"_s, 1);
        writeReturn(u"both.toml"_s, 2);
    }

    /// Of the first line, of which two pieces were sold.
    void writeReturn(const QString& name, int pieces) const
    {
        writeFile(name, u"type = \"return\"\nsale = \"%1\"\n[[line]]\nposition = 1\n"
                        "quantity = %2\n"_s.arg(sale)
                            .arg(pieces));
    }
    RunResult fourth(const QStringList& arguments) const
    {
        return till(QStringList{u"--config"_s, u"fourth.toml"_s} + arguments);
    }
    std::unique_ptr<Program> startFourth() const
    {
        return std::make_unique<Program>(QStringLiteral(ORVA_TILL),
                                         QStringList{u"--config"_s, u"fourth.toml"_s, u"work"_s},
                                         folder());
    }
    /// What the store knows of returns: kept, reserved, given back.
    QString returns() const
    {
        return cluster.sql(u"SELECT count(*) FILTER (WHERE is_closed), "
                           "count(*) FILTER (WHERE NOT is_closed AND NOT is_released), "
                           "count(*) FILTER (WHERE is_released) FROM orva.returns"_s);
    }

    QString sale;
};

} // namespace

TEST_F(ReturnsAtTills, TakeASaleOfAnotherTillBackAndNoPieceTwice)
{
    const RunResult first = fourth({u"return"_s, u"one.toml"_s, u"--wait"_s, u"30"_s});
    EXPECT_EQ(first.exitCode, 0) << qPrintable(first.output);
    EXPECT_EQ(returns(), u"1|0|0"_s);
    const RunResult both = till({u"return"_s, u"both.toml"_s});
    EXPECT_EQ(both.exitCode, 2) << qPrintable(both.output);
    done({u"return"_s, u"one.toml"_s, u"--wait"_s, u"30"_s});
    EXPECT_EQ(returns(), u"2|0|0"_s);
    EXPECT_EQ(fourth({u"return"_s, u"one.toml"_s}).exitCode, 2);
    EXPECT_EQ(stored(u"checks"_s), u"3"_s);
}

TEST_F(ReturnsAtTills, AreExplainedFromASaleAndReturnsOfOtherTills)
{
    done({u"return"_s, u"one.toml"_s, u"--wait"_s, u"30"_s});
    const RunResult second = fourth({u"return"_s, u"one.toml"_s, u"--wait"_s, u"30"_s});
    EXPECT_EQ(second.exitCode, 0) << qPrintable(second.output);
    const RunResult explained = fourth({u"explain"_s, u"last"_s});
    EXPECT_EQ(explained.exitCode, 0) << qPrintable(explained.output);
    EXPECT_TRUE(explained.output.contains(u"less what was returned before"_s))
        << qPrintable(explained.output);
    // the first of the two is not this till's either
    const QString first = list({u"checks"_s}).first().toObject().value(u"id"_s).toString();
    const RunResult foreign = fourth({u"explain"_s, first});
    EXPECT_EQ(foreign.exitCode, 0) << qPrintable(foreign.output);
    cluster.kill();
    EXPECT_EQ(fourth({u"explain"_s, u"last"_s}).exitCode, 1);
    cluster.start();
}

TEST_F(ReturnsAtTills, ParkWhatContradictsAnotherTillWithBothNames)
{
    cluster.kill();
    const RunResult alone = till({u"return"_s, u"both.toml"_s});
    EXPECT_NE(alone.exitCode, 2) << qPrintable(alone.output);
    const QString own = list({u"checks"_s}).first().toObject().value(u"id"_s).toString();
    ASSERT_NE(own, sale);
    cluster.start();
    const RunResult other = fourth({u"return"_s, u"one.toml"_s, u"--wait"_s, u"30"_s});
    ASSERT_EQ(other.exitCode, 0) << qPrintable(other.output);
    const QString rival = cluster.sql(u"SELECT identifier FROM orva.returns"_s);
    for (int i = 0; i < 2; ++i) {
        till({u"queue"_s, u"deliver"_s});
        const QJsonArray queue = list({u"queue"_s, u"list"_s});
        ASSERT_EQ(queue.size(), 1);
        const QJsonObject parked = queue.first().toObject();
        EXPECT_EQ(parked.value(u"state"_s).toString(), u"parked"_s);
        const QString shown = done({u"queue"_s, u"list"_s});
        const QString joined = QString(shown).remove(u' ').remove(u'\n');
        EXPECT_TRUE(joined.contains(own) && joined.contains(rival)) << qPrintable(shown);
        done({u"queue"_s, u"retry"_s, QString::number(parked.value(u"id"_s).toInt())});
    }
    EXPECT_EQ(stored(u"checks"_s), u"2"_s);
}

TEST_F(ReturnsAtTills, OfASaleWithoutACardGoTheSameWay)
{
    QString plain = readFile(u"sale.toml"_s);
    writeFile(u"plain.toml"_s, plain.remove(QRegularExpression(u"card = .*\n"_s)));
    done({u"sell"_s, u"plain.toml"_s, u"--wait"_s, u"30"_s});
    sale = list({u"checks"_s}).first().toObject().value(u"id"_s).toString();
    EXPECT_EQ(stored(u"checks"_s), u"2"_s);
    EXPECT_EQ(stored(u"messages"_s), u"1"_s);
    writeReturn(u"one.toml"_s, 1);
    writeReturn(u"both.toml"_s, 2);
    const RunResult first = fourth({u"return"_s, u"one.toml"_s, u"--wait"_s, u"30"_s});
    EXPECT_EQ(first.exitCode, 0) << qPrintable(first.output);
    EXPECT_EQ(returns(), u"1|0|0"_s);
    EXPECT_EQ(till({u"return"_s, u"both.toml"_s}).exitCode, 2);
    const QString rival = cluster.sql(u"SELECT identifier FROM orva.returns"_s);

    cluster.kill();
    EXPECT_NE(till({u"return"_s, u"both.toml"_s}).exitCode, 2);
    EXPECT_NE(till({u"queue"_s, u"deliver"_s}).exitCode, 0);
    cluster.start();
    done({u"queue"_s, u"deliver"_s});
    const QString own = list({u"checks"_s}).first().toObject().value(u"id"_s).toString();
    EXPECT_EQ(stored(u"checks"_s), u"3"_s);
    const QString said = doctorLine(u"store.checks"_s);
    EXPECT_TRUE(said.startsWith(u"warning: "_s) && said.contains(own) && said.contains(rival))
        << qPrintable(said);
}

TEST_F(ReturnsAtTills, GiveBackWhatAReturnThatIsNotClosedHasReserved)
{
    const auto working = startFourth();
    expectOk(working->command(u"return one.toml"_s));
    cluster.freeze();
    EXPECT_FALSE(working->command(u"close"_s).endsWith(u"ok\n"_s));
    cluster.thaw();
    expectOk(working->command(u"abandon"_s));
    EXPECT_TRUE(cluster.waitFor(u"SELECT count(*) FROM orva.returns WHERE is_released"_s, u"1"_s));
    EXPECT_EQ(returns(), u"0|0|1"_s);
    working->send(u"quit"_s);
    EXPECT_EQ(working->waitForEnd(), 0);
    done({u"return"_s, u"both.toml"_s, u"--wait"_s, u"30"_s});
    EXPECT_EQ(returns(), u"1|0|1"_s);
}

TEST_F(ReturnsAtTills, KeepAReturnOpenUntilTheStoreAnswersAndCloseItOnce)
{
    const auto working = startFourth();
    expectOk(working->command(u"return both.toml"_s));
    cluster.freeze();
    EXPECT_FALSE(working->command(u"close"_s).endsWith(u"ok\n"_s));
    cluster.thaw();
    expectOk(working->command(u"close"_s));
    expectOk(working->command(u"wait 30"_s));
    EXPECT_EQ(returns(), u"1|0|0"_s);
    working->send(u"quit"_s);
    EXPECT_EQ(working->waitForEnd(), 0);
}

TEST_F(ReturnsAtTills, OfAnOwnSaleWaitNoLongerThanTheTimeoutForAStoreThatHangs)
{
    constexpr int seconds = 2;
    QString settings = readFile(u"orva.toml"_s);
    const auto time = [&] {
        const auto working = startTill();
        expectOk(working->command(u"help"_s)); // the program has started
        QElapsedTimer clock;
        clock.start();
        expectOk(working->command(u"return one.toml"_s));
        expectOk(working->command(u"close"_s));
        const qint64 needed = clock.elapsed();
        working->kill();
        working->waitForEnd();
        return needed;
    };
    const qint64 usually = time();
    writeFile(u"orva.toml"_s, settings.replace(u"timeout = 10"_s, u"timeout = %1"_s.arg(seconds)));
    cluster.freeze();
    const qint64 hanging = time();
    cluster.thaw();
    printFigure(
        u"a return of an own sale takes %1 ms, with a store that hangs and a time-out of %2 s "
        "%3 ms"_s.arg(usually)
            .arg(seconds)
            .arg(hanging));
    // half a second for a machine that is busy
    EXPECT_LE(hanging - usually, seconds * 1000 + 500) << "more than once the time-out";
}

TEST_F(ReturnsAtTills, CanBeReleasedByAPerson)
{
    cluster.sql(
        u"INSERT INTO orva.returns VALUES ('1042', 'gone', '%1', '9', 5, false, false, '{1}', "
        "'{1000}', '{2000}', '')"_s.arg(sale));
    writeFile(u"owner.toml"_s, u"[store]\ndatabase = \"%1\"\n"_s.arg(cluster.connection()));
    const auto store = [&](const QStringList& words) {
        return runProgram(QStringLiteral(ORVA_STORE),
                          QStringList{u"--config"_s, u"owner.toml"_s, u"returns"_s} + words,
                          folder());
    };
    const RunResult listed = store({u"list"_s});
    EXPECT_TRUE(listed.output.contains(u"gone"_s)) << qPrintable(listed.output);
    EXPECT_EQ(store({u"release"_s, u"gone"_s}).exitCode, 0);
    EXPECT_EQ(store({u"release"_s, u"gone"_s}).exitCode, 1);
    EXPECT_EQ(returns(), u"0|0|1"_s);
}
