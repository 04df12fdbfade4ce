// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/worksession.h"
#include "tests/support/keptoutput.h"

#include "host/http/operationbudget.h"
#include "tests/unit/input/hostiletoml.h"
#include "tests/unit/till/tilltest.h"
#include "till/screen/output.h"

#include <QUrl>

#include <chrono>
#include <sstream>
#include <thread>

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace {

/// How long the operation had been waiting when each of its requests began.
class Heard : public poshost::RequestObserver
{
public:
    void requestBegins(const QString&, milliseconds since, milliseconds) override
    {
        begun.append(since.count());
    }
    void requestEnded() override { ++ended; }

    QList<qint64> begun;
    int ended = 0;
};

class WorkSessionTest : public tests::TillTest
{
protected:
    WorkSessionTest()
    {
        loyalty->discounts = {{1, 30.0}};
        loyalty->spendable = 50;
        folder.write(u"sale.toml"_s,
                     u"type = \"sale\"\ncard = \"2200000000017\"\n[[line]]\ncode = \"1001\"\n"
                     "name = \"Чай\"\nprice = 100.00\nquantity = 2\n"_s);
        folder.write(u"return.toml"_s, u"type = \"return\"\nsale = \"last\"\n[[line]]\n"
                                       "position = 1\nquantity = 1\n"_s);
    }
    /// Runs the commands and returns the lines that end them.
    QStringList run(const QStringList& commands)
    {
        till::WorkSession work(
            *desk, *database, out, [this] { ++closed; }, &heard);
        const QString withPaths = commands.join(u'\n').replace(u"@"_s, folder.file({}) + u'/');
        std::istringstream input(withPaths.toStdString());
        work.run(input);
        QStringList ends;
        const QStringList lines = out.written.split(u'\n');
        for (const QString& line : lines) {
            if (line == u"ok"_s || line.startsWith(u"error: "_s)) {
                ends.append(line);
            }
        }
        return ends;
    }

    tests::KeptOutput out;
    Heard heard;
    int closed = 0;
};

} // namespace

TEST_F(WorkSessionTest, eachCommandIsAnOperationOfItsOwn)
{
    loyalty->onAsk = [] {
        const poshost::BudgetedRequest request(QUrl(u"http://server.test/"_s), milliseconds(50));
        if (request.allowed() > milliseconds(0)) {
            std::this_thread::sleep_for(milliseconds(50)); // what a silent server takes
        }
    };
    EXPECT_EQ(run({u"open @sale.toml"_s, u"request"_s}), QStringList({u"ok"_s, u"ok"_s}));
    EXPECT_EQ(heard.begun, QList<qint64>({0, 0})) << "the second command has its own time";
    EXPECT_EQ(heard.ended, 2);
}

TEST_F(WorkSessionTest, aWholeVisitIsDoneByCommands)
{
    const QStringList ends =
        run({u"open @sale.toml"_s, u"request"_s, u"points all"_s, u"tender 500"_s, u"show"_s,
             u"close"_s, u"queue"_s, u"return @return.toml"_s, u"close"_s, u"quit"_s});
    EXPECT_EQ(ends, QStringList(10, u"ok"_s)) << out.written.toStdString();
    EXPECT_EQ(closed, 2);
    EXPECT_EQ(messages(), 2);
    EXPECT_TRUE(out.written.contains(u"Paid: 120.00, tendered 500.00, change 380.00"_s))
        << out.written.toStdString();
    EXPECT_TRUE(out.written.contains(u"Card: ****0017, Анна Соколова, balance before this check "
                                     "500.00"_s));
    EXPECT_TRUE(out.written.contains(u"Points that may be spent: 50.00"_s));
    EXPECT_TRUE(out.written.contains(u"Money back: 60.00"_s)) << out.written.toStdString();
    EXPECT_TRUE(out.written.contains(u"Points given back: 25.00, taken back: 0.00"_s));
    EXPECT_FALSE(out.written.contains(u"2200000000017"_s));
}

TEST_F(WorkSessionTest, suspendedChecksAreTakenUpAgain)
{
    EXPECT_EQ(run({u"open @sale.toml"_s, u"request"_s, u"suspend"_s, u"restore last"_s,
                   u"points none"_s, u"close"_s}),
              QStringList(6, u"ok"_s))
        << out.written.toStdString();
    EXPECT_EQ(messages(), 1);
}

TEST_F(WorkSessionTest, linesAreChangedByPosition)
{
    EXPECT_EQ(run({u"open @sale.toml"_s, u"quantity 1 3"_s, u"price 1 10.50"_s, u"abandon"_s}),
              QStringList(4, u"ok"_s));
    EXPECT_TRUE(out.written.contains(u"31.50"_s)) << out.written.toStdString();
}

TEST_F(WorkSessionTest, aFileOfFortyThousandLevelsIsOneErrorLineAndTheWorkGoesOn)
{
    folder.write(u"deep.toml"_s, QString::fromLatin1(tests::deepToml().first()));
    const QStringList ends =
        run({u"open @deep.toml"_s, u"return @deep.toml"_s, u"open @sale.toml"_s, u"abandon"_s});
    ASSERT_EQ(ends.size(), 4) << out.written.toStdString();
    EXPECT_TRUE(ends.at(0).startsWith(u"error: "_s) && ends.at(0).contains(u"64 levels"_s));
    EXPECT_TRUE(ends.at(1).startsWith(u"error: "_s) && ends.at(1).contains(u"64 levels"_s));
    EXPECT_EQ(ends.at(2), u"ok"_s);
    EXPECT_EQ(ends.at(3), u"ok"_s);
}

TEST_F(WorkSessionTest, whatCannotBeDoneIsOneErrorLineAndTheWorkGoesOn)
{
    const QStringList ends =
        run({u"close"_s, u"bogus"_s, u"open"_s, u"open @missing.toml"_s, u"open @return.toml"_s,
             u"return @sale.toml"_s, u"open @sale.toml"_s, u"quantity 1 x"_s, u"quantity 7 1"_s,
             u"tender 1.999"_s, u"wait long"_s, u"restore nobody"_s, u"abandon"_s});
    ASSERT_EQ(ends.size(), 13) << out.written.toStdString();
    EXPECT_EQ(ends.at(0), u"error: No check is open; open one first."_s);
    EXPECT_EQ(ends.at(1), u"error: There is no command \"bogus\"; \"help\" lists them."_s);
    EXPECT_EQ(ends.at(2), u"error: Write it so: open FILE"_s);
    EXPECT_TRUE(ends.at(3).contains(u"missing.toml: the check file cannot be read"_s));
    EXPECT_TRUE(ends.at(4).endsWith(u"return.toml is a return; open it with \"return\"."_s));
    EXPECT_TRUE(ends.at(5).endsWith(u"sale.toml is a sale; open it with \"open\"."_s));
    EXPECT_EQ(ends.at(6), u"ok"_s);
    EXPECT_EQ(ends.at(7), u"error: \"x\" is not a quantity with at most three decimals."_s);
    EXPECT_EQ(ends.at(8), u"error: The check has no line 7."_s);
    EXPECT_TRUE(ends.at(9).startsWith(u"error: \"1.999\" is not a sum"_s));
    EXPECT_EQ(ends.at(10), u"error: \"long\" is not a number of seconds up to 3600."_s);
    EXPECT_TRUE(ends.at(11).startsWith(u"error: Check "_s));
    EXPECT_EQ(ends.at(12), u"ok"_s);
}

TEST_F(WorkSessionTest, aRefusedCardIsANoteAndTheSaleGoesOn)
{
    loyalty->knowsCard = false;
    EXPECT_EQ(run({u"open @sale.toml"_s, u"close"_s}), QStringList(2, u"ok"_s));
    EXPECT_TRUE(out.written.contains(
        u"note: The sale goes on without the loyalty system (Карта неизвестна)."_s));
    EXPECT_TRUE(out.written.contains(u"Without the loyalty system: Карта неизвестна"_s));
}

TEST_F(WorkSessionTest, waitingIsBoundedAndTellsWhatIsLeft)
{
    EXPECT_EQ(run({u"wait 0"_s}), QStringList{u"ok"_s});
    out.written.clear();
    EXPECT_EQ(run({u"open @sale.toml"_s, u"request"_s, u"close"_s, u"wait 0"_s}).last(),
              u"error: Still to be delivered: 1 waiting, 0 paused, 0 parked."_s);
}

TEST_F(WorkSessionTest, commentsAndEmptyLinesAreNoCommands)
{
    EXPECT_EQ(run({u""_s, u"  "_s, u"# a remark"_s, u"help"_s}), QStringList{u"ok"_s});
    for (const QString& name : {u"open"_s, u"restore"_s, u"wait"_s, u"quit"_s}) {
        EXPECT_TRUE(out.written.contains(u'\n' + name)) << name.toStdString();
    }
}

TEST_F(WorkSessionTest, theEndOfTheInputAbandonsAnOpenCheck)
{
    run({u"open @sale.toml"_s});
    EXPECT_EQ(store.list().first().state, u"abandoned"_s);
    EXPECT_TRUE(out.written.contains(u"was still open and is abandoned."_s));
}
