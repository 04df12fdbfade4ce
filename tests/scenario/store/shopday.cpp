// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/store/shopday.h"

#include "tests/support/tillsettings.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QThread>
#include <QUrl>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int drainSeconds = 180;

const QString saleText =
    QStringLiteral("type = \"sale\"\ncard = \"%1\"\n[[line]]\ncode = \"1001\"\n"
                   "name = \"Чай\"\nprice = 149.90\nquantity = %2\n");
const QString returnText =
    QStringLiteral("type = \"return\"\nsale = \"last\"\n[[line]]\nposition = 1\nquantity = 1\n");

QString cardNumber(int number)
{
    return u"9%1"_s.arg(number, 12, 10, QChar(u'0'));
}

QString rulesWithCards(int count)
{
    QString rules =
        runProgram(QStringLiteral(ORVA_SIMULATOR), {u"rules"_s}, QDir::tempPath()).output;
    for (int number = 1; number <= count; ++number) {
        rules += u"\n[[card]]\nnumber = \"%1\"\nname = \"Анна\"\nsurname = \"Соколова\"\n"
                 "balance = 0\n"_s.arg(cardNumber(number));
    }
    return rules;
}

} // namespace

void ShopDay::SetUp()
{
    ASSERT_TRUE(scene.isValid());
    primary = first.get();
    standby = first->makeStandby(u"second"_s);
    first->set(u"synchronous_standby_names"_s, u"second"_s);
    writeFile(u"rules.toml"_s, rulesWithCards(cards));
    address = openServer(0);
    ASSERT_FALSE(address.isEmpty());
    writeFile(u"worker.toml"_s, u"[store]\ndatabase = \"%1\"\n"_s.arg(storeString(u"postgres"_s)));
    const auto store = [&](const QStringList& words) {
        const RunResult run =
            runProgram(QStringLiteral(ORVA_STORE),
                       QStringList{u"--config"_s, path(u"worker.toml"_s)} + words, folder());
        EXPECT_EQ(run.exitCode, 0) << qPrintable(run.output);
    };
    store({u"migrate"_s});
    ask(u"CREATE ROLE till LOGIN"_s);
    store({u"admit"_s, u"till"_s, u"1042"_s});
}

QString ShopDay::storeString(const QString& login) const
{
    return first->connectionBefore(*standby, login);
}

/// Quiet: nobody reads what it prints, and a full pipe would stop it.
QString ShopDay::openServer(int port)
{
    server = std::make_unique<Program>(
        QStringLiteral(ORVA_SIMULATOR),
        QStringList{u"--quiet"_s, u"--database"_s, path(u"server.sqlite"_s), u"--port"_s,
                    QString::number(port), u"--config"_s, path(u"rules.toml"_s)},
        folder());
    return server->waitForLine(u"Listening on "_s);
}

void ShopDay::openTills(int tills, quint64 seed)
{
    for (int number = 1; number <= tills; ++number) {
        const QString name = u"till%1"_s.arg(number);
        ASSERT_TRUE(QDir(folder()).mkdir(name));
        auto settings = tests::TillSettings::numbered(number, address, QStringLiteral(ORVA_PLUGIN));
        settings.store = storeString(u"till"_s);
        settings.storeModule = QStringLiteral(ORVA_STORE_MODULE);
        writeFile(name + u"/orva.toml"_s, settings.toml());
        for (int sale = 1; sale <= cards; ++sale) {
            writeFile(u"%1/sale%2.toml"_s.arg(name).arg(sale),
                      saleText.arg(cardNumber(sale)).arg(1 + sale % 5));
        }
        writeFile(name + u"/return.toml"_s, returnText);
        hands.push_back(std::make_unique<TillHand>(path(name), cards, seed + quint64(number)));
        threads.emplace_back([this, hand = hands.back().get()] { hand->work(closing); });
    }
}

std::unique_ptr<Program> ShopDay::makeWorker(int number) const
{
    return std::make_unique<Program>(QStringLiteral(ORVA_STORE),
                                     QStringList{u"--config"_s, path(u"worker.toml"_s), u"work"_s,
                                                 u"--name"_s, u"worker%1"_s.arg(number),
                                                 u"--lane-timeout"_s, u"5"_s},
                                     folder());
}

void ShopDay::startWorkers(int count)
{
    for (int number = 1; number <= count; ++number) {
        workers.push_back(makeWorker(number));
    }
}

void ShopDay::sabotage(int seconds, std::mt19937_64& random)
{
    const auto upTo = [&](int most) { return std::uniform_int_distribution<>(0, most)(random); };
    const QDeadlineTimer end(seconds * 1000);
    const QDeadlineTimer half(seconds * 500);
    while (!end.hasExpired()) {
        QThread::msleep(static_cast<unsigned long>(200 + upTo(1500)));
        const int what = upTo(9);
        if (primaryKills == 0 && half.hasExpired()) {
            killPrimary();
        } else if (what < 4) {
            const int number = upTo(static_cast<int>(workers.size()) - 1);
            workers.at(size_t(number))->kill();
            workers.at(size_t(number)) = makeWorker(number + 1);
            ++workerKills;
        } else if (what < 6) {
            killServer();
        } else if (what < 9) {
            cutConnections += ask(u"SELECT count(pg_terminate_backend(pid)) FROM (SELECT pid FROM "
                                  "pg_stat_activity WHERE backend_type = 'client backend' AND pid "
                                  "<> pg_backend_pid() ORDER BY random() LIMIT 3) AS chosen"_s)
                                  .toInt();
        }
    }
}

void ShopDay::killServer()
{
    server->kill();
    server->waitForEnd();
    ASSERT_EQ(openServer(QUrl(address).port()), address);
    ++serverKills;
}

/// The standby takes over, and no other one is waited for: there is none any more.
void ShopDay::killPrimary()
{
    first->kill();
    standby->set(u"synchronous_standby_names"_s, QString());
    standby->promote();
    primary = standby.get();
    ++primaryKills;
}

void ShopDay::closeTills()
{
    closing = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    threads.clear();
}

void ShopDay::drain()
{
    for (const auto& hand : hands) {
        const QDeadlineTimer deadline(drainSeconds * 1000);
        RunResult run = hand->run({u"queue"_s, u"deliver"_s});
        while (run.exitCode != 0 && !deadline.hasExpired()) {
            QThread::msleep(100);
            run = hand->run({u"queue"_s, u"deliver"_s});
        }
        EXPECT_EQ(run.exitCode, 0) << qPrintable(run.output);
    }
    // a long day leaves many: as long as they become fewer, they are on their way
    const QString waiting = u"SELECT coalesce(sum(waiting), 0) FROM orva.lanes"_s;
    int left = ask(waiting).toInt();
    QDeadlineTimer deadline(drainSeconds * 1000);
    while (left > 0 && !deadline.hasExpired()) {
        QThread::msleep(100);
        const int before = std::exchange(left, ask(waiting).toInt());
        if (left < before) {
            deadline.setRemainingTime(drainSeconds * 1000);
        }
    }
    EXPECT_EQ(ask(waiting), u"0"_s);
    EXPECT_EQ(ask(u"SELECT count(*) FROM orva.parked"_s), u"0"_s);
    workers.clear();
    server->terminate();
}
