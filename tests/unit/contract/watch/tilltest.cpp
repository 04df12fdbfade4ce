// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The program orva-till with the watching loyalty system instead of the plug-in: whatever a cashier
// does, nothing is found.

#include "tests/support/program.h"
#include "tests/unit/client/printers.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const auto saleText = u"type = \"sale\"\n"
                      "card = \"2200000000017\"\n"
                      "[[line]]\ncode = \"1001\"\nname = \"Чай\"\nprice = 100\nquantity = 2\n"
                      "[[line]]\ncode = \"1002\"\nname = \"Яблоки\"\nprice = 60\nquantity = 0.5\n"
                      "unit = \"kg\"\n"_s;
const auto returnText = u"type = \"return\"\nsale = \"last\"\n"
                        "[[line]]\nposition = 1\nquantity = 1\n"_s;

class WatchedTill : public ::testing::Test
{
protected:
    WatchedTill()
    {
        write(u"sale.toml"_s, saleText);
        write(u"return.toml"_s, returnText);
        write(u"orva.toml"_s, config());
        qputenv("POSHOST_WATCH_FILE", QFile::encodeName(scene.filePath(u"findings"_s)));
    }
    ~WatchedTill() override
    {
        qunsetenv("POSHOST_WATCH_FILE");
        qunsetenv("POSHOST_WATCH_FAIL");
    }

    static QString config()
    {
        return u"[till]\ndatabase = \"till.sqlite\"\nplugin = \"%1\"\n"_s.arg(
            QStringLiteral(ORVA_WATCH));
    }

    void write(const QString& name, const QString& text) const
    {
        QFile file(scene.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text.toUtf8());
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    }

    void till(const QStringList& arguments, int exitCode = 0) const
    {
        const RunResult result = runProgram(QStringLiteral(ORVA_TILL), arguments, scene.path());
        EXPECT_EQ(result.exitCode, exitCode) << result.output.toStdString();
    }

    /// A cashier's commands in one process; all must succeed but those that begin with "!".
    void work(const QStringList& commands, bool killed = false) const
    {
        Program cashier(QStringLiteral(ORVA_TILL), {u"work"_s}, scene.path());
        for (const QString& command : commands) {
            const bool fails = command.startsWith(u'!');
            const QString answer = cashier.command(command.mid(fails ? 1 : 0));
            EXPECT_EQ(answer.endsWith(u"ok\n"_s), !fails) << command.toStdString() << '\n'
                                                          << answer.toStdString();
        }
        if (killed) {
            cashier.kill();
        } else {
            cashier.send(u"quit"_s);
            EXPECT_EQ(cashier.waitForEnd(), 0) << cashier.output().toStdString();
        }
    }

    /// Nothing was found in so many processes that ended by themselves, with so many calls at
    /// least: a system that was not loaded finds nothing either.
    void expectNothingFound(int processes, int calls) const
    {
        QFile file(scene.filePath(u"findings"_s));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << "nothing was watched";
        const QString written = QString::fromUtf8(file.readAll());
        const QStringList lines = written.split(u'\n', Qt::SkipEmptyParts);
        int watched = 0;
        for (const QString& line : lines) {
            EXPECT_TRUE(line.endsWith(u" calls watched, 0 findings"_s)) << line.toStdString();
            watched += line.section(u' ', 1, 1).toInt();
        }
        EXPECT_EQ(lines.size(), processes) << written.toStdString();
        EXPECT_GE(watched, calls) << written.toStdString();
    }

    QTemporaryDir scene;
};

} // namespace

TEST_F(WatchedTill, ASaleWithPointsAndACheckThatIsOnlyShown)
{
    till({u"check"_s, u"sale.toml"_s});
    till({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"all"_s, u"--tender"_s, u"500"_s});
    till({u"sell"_s, u"sale.toml"_s});
    // init, identifying, request, confirming, clearing and deinit at least
    expectNothingFound(3, 5 + 11 + 6);
}

TEST_F(WatchedTill, ADayAtTheTill)
{
    work({u"open sale.toml"_s,
          u"quantity 1 3"_s,
          u"request"_s,
          u"price 2 55"_s,
          u"request"_s,
          u"points 20"_s,
          u"points all"_s,
          u"points none"_s,
          u"points 35.50"_s,
          u"tender 1000"_s,
          u"show"_s,
          u"close"_s,
          u"open sale.toml"_s,
          u"request"_s,
          u"quantity 1 1"_s,
          u"close"_s,
          u"open sale.toml"_s,
          u"request"_s,
          u"abandon"_s,
          u"open sale.toml"_s,
          u"abandon"_s,
          u"open sale.toml"_s,
          u"request"_s,
          u"points 10"_s,
          u"price 1 90"_s,
          u"points 5"_s,
          u"close"_s,
          u"return return.toml"_s,
          u"request"_s,
          u"close"_s,
          u"return return.toml"_s,
          u"abandon"_s,
          u"open sale.toml"_s});
    expectNothingFound(1, 60);
}

TEST_F(WatchedTill, AReturnWhoseSaleHasBeenDelivered)
{
    till({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"all"_s});
    till({u"queue"_s, u"park"_s, u"1"_s});
    till({u"queue"_s, u"settle"_s, u"1"_s});
    till({u"return"_s, u"return.toml"_s});
    work({u"return return.toml"_s, u"request"_s, u"close"_s});
    expectNothingFound(3, 20);
}

TEST_F(WatchedTill, ASuspendedCheckInTheSameAndInAnotherProcess)
{
    work({u"open sale.toml"_s, u"request"_s, u"points 20"_s, u"suspend"_s, u"open sale.toml"_s,
          u"request"_s, u"close"_s, u"restore last"_s, u"suspend"_s, u"restore last"_s,
          u"points 10"_s, u"suspend"_s});
    work({u"restore last"_s});
    work({u"restore last"_s, u"quantity 1 1"_s, u"close"_s});
    work({u"open sale.toml"_s, u"request"_s, u"suspend"_s, u"restore last"_s, u"abandon"_s});
    expectNothingFound(4, 40);
}

TEST_F(WatchedTill, AProcessThatWasKilled)
{
    work({u"open sale.toml"_s, u"request"_s, u"points 20"_s}, true);
    work({u"open sale.toml"_s, u"request"_s, u"points 20"_s, u"suspend"_s}, true);
    work({u"restore last"_s, u"points all"_s}, true);
    work({u"restore last"_s, u"tender 500"_s, u"close"_s}, true);
    work({u"return return.toml"_s, u"close"_s});
    expectNothingFound(1, 4);
}

TEST_F(WatchedTill, ACardThatIsRefused)
{
    qputenv("POSHOST_WATCH_FAIL", "identifyByCard,identifyByCard:2");
    till({u"sell"_s, u"sale.toml"_s}, 3);
    work({u"open sale.toml"_s, u"card 2200000000017"_s, u"card 2200000000017"_s, u"request"_s,
          u"close"_s, u"open sale.toml"_s, u"close"_s});
    expectNothingFound(2, 12);
}

TEST_F(WatchedTill, ARequestThatFails)
{
    qputenv("POSHOST_WATCH_FAIL", "request,request:3");
    till({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"all"_s}, 3);
    work({u"open sale.toml"_s, u"request"_s, u"close"_s, u"open sale.toml"_s, u"request"_s,
          u"quantity 1 5"_s, u"request"_s, u"close"_s, u"open sale.toml"_s, u"request"_s,
          u"close"_s});
    expectNothingFound(2, 16);
}

TEST_F(WatchedTill, AConfirmationThatFailsAndIsTriedAgain)
{
    qputenv("POSHOST_WATCH_FAIL", "commit,commit:2,commit:4");
    work({u"open sale.toml"_s, u"request"_s, u"points 20"_s, u"!close"_s, u"!close"_s, u"close"_s,
          u"return return.toml"_s, u"!close"_s, u"close"_s});
    expectNothingFound(1, 20);
}

TEST_F(WatchedTill, ATillThatRecords)
{
    write(u"orva.toml"_s, config() + u"[recording]\nfolder = \"records\"\n"_s);
    till({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"all"_s});
    work({u"open sale.toml"_s, u"request"_s, u"suspend"_s});
    work({u"restore last"_s, u"close"_s});
    expectNothingFound(3, 18);
}

TEST_F(WatchedTill, ADoctorThatAsksNobody)
{
    // it ends with a finding of its own: no server is configured
    till({u"doctor"_s, u"--card"_s, u"2200000000017"_s}, 1);
    expectNothingFound(1, 2);
}

TEST_F(WatchedTill, CredentialsAreReadFromTheSystem)
{
    till({u"sell"_s, u"sale.toml"_s});
    till({u"queue"_s, u"reauthorize"_s});
    expectNothingFound(2, 9);
}
