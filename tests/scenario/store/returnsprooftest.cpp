// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Goods of one till's sales come back at five others, in parts and in any order, while tills and
// the store are stopped by chance. In the end no piece came back twice, and what was given back is
// what was taken.

#include "tests/scenario/store/returnsproof.h"
#include "tests/scenario/store/proofsize.h"
#include "tests/scenario/store/storeshop.h"
#include "tests/support/tillsettings.h"
#include "till/checks/checkstore.h"

#include "host/database/database.h"

#include <QThread>
#include <random>

namespace {

constexpr int takers = 5;
constexpr int pieces = 5; ///< of each sale
constexpr int minuteMilliseconds = 61'000;

class ReturnsProof : public StoreShop
{
protected:
    void SetUp() override
    {
        StoreShop::SetUp();
        for (int number = 0; number <= takers; ++number) {
            tests::TillSettings settings;
            settings.server = address;
            settings.plugin = QStringLiteral(ORVA_PLUGIN);
            settings.name = QString::number(number);
            settings.database = u"till%1.sqlite"_s.arg(number);
            writeFile(u"till%1.toml"_s.arg(number),
                      settings.toml() +
                          u"[store]\ndatabase = \"%1\"\nshop = \"1042\"\nmodule = \"%2\"\n"_s.arg(
                              storeString(), QStringLiteral(ORVA_STORE_MODULE)));
        }
        writeFile(u"goods.toml"_s,
                  u"type = \"sale\"\ncard = \"2200000000017\"\n[[line]]\ncode = \"1001\"\n"
                  "name = \"Чай\"\nprice = 149.99\nquantity = %1\n"_s.arg(pieces));
    }

    int upTo(int most) { return std::uniform_int_distribution<>(0, most)(random); }
    QStringList configOf(int number) const { return {u"--config"_s, u"till%1.toml"_s.arg(number)}; }

    Program& working(int number)
    {
        std::unique_ptr<Program>& at = tills.at(size_t(number));
        if (!at) {
            at = std::make_unique<Program>(QStringLiteral(ORVA_TILL),
                                           configOf(number) + QStringList{u"work"_s}, folder());
        }
        return *at;
    }
    bool isOk(int number, const QString& command)
    {
        return working(number).command(command).endsWith(u"ok\n"_s);
    }
    void kill(int number)
    {
        QThread::msleep(static_cast<unsigned long>(upTo(40)));
        tills.at(size_t(number))->kill();
        tills.at(size_t(number))->waitForEnd();
        tills.at(size_t(number)).reset();
        ++kills;
    }

    void sellAll(int count)
    {
        for (int i = 0; i < count; ++i) {
            expectOk(working(0).command(u"open goods.toml"_s));
            if (i % 2 == 1) {
                isOk(0, u"points all"_s);
            }
            expectOk(working(0).command(u"close"_s));
        }
        expectOk(working(0).command(u"wait 600"_s));
        forEachClosed(0, [this](const till::Check& check) {
            model.addSale(check);
            sales.append(check.id());
        });
    }

    /// One customer comes with some pieces of a sale to a till; whatever goes wrong goes wrong.
    void takeBack()
    {
        const QString& sale = sales.at(upTo(int(sales.size()) - 1));
        const int number = 1 + upTo(takers - 1);
        writeFile(u"back.toml"_s, u"type = \"return\"\nsale = \"%1\"\n[[line]]\nposition = 1\n"
                                  "quantity = %2\n"_s.arg(sale)
                                      .arg(1 + upTo(1)));
        if (!isOk(number, u"return back.toml"_s)) {
            return;
        }
        const int what = upTo(19);
        if (what == 0) {
            isOk(number, u"abandon"_s);
        } else if (what < 3) {
            working(number).send(u"close"_s);
            kill(number);
        } else if (what == 3) {
            stopStore(number);
        } else if (!isOk(number, u"close"_s)) {
            isOk(number, upTo(1) == 0 ? u"close"_s : u"abandon"_s);
            isOk(number, u"abandon"_s);
        }
    }

    /// The store falls silent, or its power is cut, while a return is being closed.
    void stopStore(int number)
    {
        ++storeStops;
        working(number).send(u"close"_s);
        QThread::msleep(static_cast<unsigned long>(upTo(20)));
        if (upTo(1) == 0) {
            cluster.freeze();
            QThread::msleep(static_cast<unsigned long>(upTo(200)));
            cluster.thaw();
        } else {
            cluster.kill();
            cluster.start();
        }
        working(number).command(u"abandon"_s); // the answer to close, or to abandon
        kill(number);
    }

    /// What is left open by a killed till belongs to it for a minute: so it is older here.
    void settle()
    {
        for (int number = 1; number <= takers; ++number) {
            if (tills.at(size_t(number))) {
                kill(number);
            }
            poshost::Database database(path(u"till%1.sqlite"_s.arg(number)));
            database.execute(u"UPDATE return_reservations SET noted_at = noted_at - %1"_s.arg(
                minuteMilliseconds));
        }
        for (int number = 1; number <= takers; ++number) {
            const RunResult run = till(configOf(number) + QStringList{u"queue"_s, u"deliver"_s});
            EXPECT_EQ(run.exitCode, 0) << qPrintable(run.output);
        }
    }

    void forEachClosed(int number, const std::function<void(const till::Check&)>& take)
    {
        till::CheckStore(
            QSharedPointer<poshost::Database>::create(path(u"till%1.sqlite"_s.arg(number))))
            .forEachClosed(take);
    }

    std::mt19937_64 random{
        qEnvironmentVariableIsSet("ORVA_STORE_SEED")
            ? static_cast<quint64>(qEnvironmentVariable("ORVA_STORE_SEED").toULongLong())
            : 7};
    std::array<std::unique_ptr<Program>, takers + 1> tills;
    QStringList sales;
    TakenBack model;
    int kills = 0;
    int storeStops = 0;
};

} // namespace

TEST_F(ReturnsProof, GiveBackWhatWasTakenAndNoPieceTwice)
{
    const int count = sized(500, 4);
    sellAll(count);
    ASSERT_EQ(model.sold(), count);
    for (int customer = 0; customer < count * pieces * 2; ++customer) {
        takeBack();
    }
    settle();
    // what is left comes back without trouble, so that every sale is whole
    for (const QString& sale : std::as_const(sales)) {
        writeFile(u"back.toml"_s, u"type = \"return\"\nsale = \"%1\"\n[[line]]\nposition = 1\n"
                                  "quantity = 1\n"_s.arg(sale));
        const int number = 1 + upTo(takers - 1);
        for (int i = 0; i <= pieces && isOk(number, u"return back.toml"_s); ++i) {
            expectOk(working(number).command(u"close"_s));
        }
    }
    settle();
    for (int number = 1; number <= takers; ++number) {
        forEachClosed(number, [this](const till::Check& check) { model.addReturn(check); });
    }
    EXPECT_EQ(model.complaints(), QStringList());
    int whole = 0;
    for (const QString& sale : std::as_const(sales)) {
        whole += model.isWhole(sale) ? 1 : 0;
    }
    EXPECT_EQ(whole, count) << "a piece is reserved for ever";
    EXPECT_EQ(cluster.sql(u"SELECT count(*) FROM orva.returns WHERE is_closed"_s),
              QString::number(model.returned()));
    EXPECT_EQ(cluster.sql(u"SELECT count(*) FROM orva.returns WHERE NOT is_closed "
                          "AND NOT is_released"_s),
              u"0"_s);
    printFigure(u"%1 sales in parts at %2 tills: %3 returns, %4 kills of a till, %5 stops of the "
                "store; nothing given back twice"_s.arg(count)
                    .arg(takers)
                    .arg(model.returned())
                    .arg(kills)
                    .arg(storeStops));
}
