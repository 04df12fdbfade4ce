// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The program as a whole, with the built plug-in and a server behind the host's HTTP client.

#include "till/commands/program.h"
#include "tests/support/keptoutput.h"

#include "tests/support/grantingserver.h"
#include "tests/unit/till/tilltest.h"
#include "till/screen/output.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;
using till::Command;
using till::ExitCode;
using till::Options;

namespace {

class ProgramTest : public ::testing::Test
{
protected:
    ProgramTest()
    {
        QLoggingCategory::setFilterRules(u"orva=false\nposhost.*=false"_s);
        folder.write(u"orva.toml"_s,
                     u"[Orva]\nserverUrl = \"http://127.0.0.1:1/\"\nuser = \"till\"\n"
                     "password = \"secret\"\napikey = \"demo\"\n[till]\n"
                     "database = \"till.sqlite\"\nplugin = \"%1\"\n"_s.arg(
                         QString::fromUtf8(ORVA_PLUGIN_FILE)));
        folder.write(u"sale.toml"_s, saleFile(u"card = \"2200000000017\"\n"_s));
        folder.write(u"nocard.toml"_s, saleFile({}));
        folder.write(u"return.toml"_s, u"type = \"return\"\nsale = \"last\"\n[[line]]\n"
                                       "position = 1\nquantity = 1\n"_s);
    }
    ~ProgramTest() override { QLoggingCategory::setFilterRules(QString()); }

    static QString saleFile(const QString& card)
    {
        return u"type = \"sale\"\n%1[[line]]\ncode = \"1001\"\nname = \"Чай\"\n"
               "price = 100.00\nquantity = 2\n"_s.arg(card);
    }
    ExitCode run(Command command, const QString& file = {})
    {
        options.command = command;
        options.configFile = folder.file(config);
        options.configNamed = true;
        options.file = folder.file(file);
        out.written.clear();
        errors.written.clear();
        return till::Program(options, out, errors).run();
    }
    QString said() const { return out.written + errors.written; }

    TestFolder folder;
    tests::GrantingServer server;
    QString config = u"orva.toml"_s;
    Options options;
    tests::KeptOutput out;
    tests::KeptOutput errors;
};

} // namespace

TEST_F(ProgramTest, aPreCheckShowsTheEffectAndClosesNothing)
{
    EXPECT_EQ(run(Command::Check, u"sale.toml"_s), ExitCode::Ok) << said().toStdString();
    EXPECT_TRUE(out.written.contains(u"Анна Соколова, balance before this check 500.00"_s));
    EXPECT_TRUE(out.written.contains(u"To the customer: Спасибо"_s));
    EXPECT_EQ(run(Command::QueueList), ExitCode::Ok);
    EXPECT_EQ(out.written, u"Nothing is to be delivered.\n"_s);
    options.json = true;
    EXPECT_EQ(run(Command::Checks), ExitCode::Ok);
    EXPECT_EQ(out.written, u"[\n]\n"_s);
}

TEST_F(ProgramTest, aPreCheckUsesUpNoNumber)
{
    options.json = true;
    int asked = 0;
    for (const Command command : {Command::Check, Command::Check, Command::Sell, Command::Check}) {
        ASSERT_EQ(run(command, u"nocard.toml"_s), ExitCode::Ok) << said().toStdString();
        const QJsonObject check = QJsonDocument::fromJson(out.written.toUtf8()).object();
        EXPECT_EQ(check.value(u"number"_s).toInt(), ++asked < 4 ? 1 : 2) << asked;
    }
}

TEST_F(ProgramTest, aSaleWithoutACardEndsWith0)
{
    EXPECT_EQ(run(Command::Sell, u"nocard.toml"_s), ExitCode::Ok) << said().toStdString();
    EXPECT_TRUE(out.written.endsWith(u"Paid: 200.00\n"_s)) << said().toStdString();
    EXPECT_TRUE(server.bodies().isEmpty());
}

TEST_F(ProgramTest, aSaleThatHadToGoWithoutLoyaltyEndsWith3)
{
    server.reachable = false;
    EXPECT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::WithoutLoyalty);
    EXPECT_TRUE(out.written.contains(
        u"note: The sale goes on without the loyalty system (Нет связи с сервером)."_s))
        << said().toStdString();
    EXPECT_EQ(run(Command::Check, u"sale.toml"_s), ExitCode::WithoutLoyalty);
    EXPECT_EQ(run(Command::QueueList), ExitCode::Ok);
    EXPECT_EQ(out.written, u"Nothing is to be delivered.\n"_s);
}

TEST_F(ProgramTest, unusableFilesEndWith2)
{
    EXPECT_EQ(run(Command::Sell, u"missing.toml"_s), ExitCode::Usage);
    EXPECT_TRUE(errors.written.startsWith(u"orva-till: "_s)) << said().toStdString();
    EXPECT_EQ(run(Command::Sell, u"return.toml"_s), ExitCode::Usage);
    EXPECT_EQ(run(Command::Return, u"sale.toml"_s), ExitCode::Usage);
    EXPECT_EQ(run(Command::Return, u"return.toml"_s), ExitCode::Usage); // no sale yet
    config = u"missing-orva.toml"_s;
    EXPECT_EQ(run(Command::Checks), ExitCode::Usage);
    config = u"broken.toml"_s;
    folder.write(config, u"[Orva]\ntimeout = \"soon\"\n[till]\nplugin = \"%1\"\n"_s.arg(
                             QStringLiteral(ORVA_PLUGIN_FILE)));
    EXPECT_EQ(run(Command::Checks), ExitCode::Usage);
    EXPECT_TRUE(errors.written.contains(u"Orva.timeout"_s)) << said().toStdString();
    folder.write(config, u"[till]\nname = \"3\"\n"_s);
    EXPECT_EQ(run(Command::Checks), ExitCode::Usage);
    EXPECT_TRUE(errors.written.contains(u"names no database"_s)) << said().toStdString();
    folder.write(config, u"[till]\ndatabase = \"x.sqlite\"\n"_s);
    EXPECT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::Usage);
    EXPECT_TRUE(errors.written.contains(u"names no plug-in"_s)) << said().toStdString();
}

TEST_F(ProgramTest, failuresEndWith1)
{
    options.tenderKopecks = 1;
    EXPECT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::Failed);
    EXPECT_TRUE(errors.written.contains(u"and 0.01 was tendered"_s)) << said().toStdString();
    options.plugin = folder.file(u"sale.toml"_s);
    EXPECT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::Failed);
    EXPECT_TRUE(errors.written.contains(u"Plug-in metadata"_s)) << said().toStdString();
    options.plugin.clear();
    options.message = 99;
    for (const Command command :
         {Command::QueueShow, Command::QueueRetry, Command::QueuePark, Command::QueueSettle}) {
        EXPECT_EQ(run(command), ExitCode::Failed);
        EXPECT_TRUE(errors.written.contains(u"message 99"_s)) << said().toStdString();
    }
    folder.write(u"garbage.sqlite"_s, QString(5000, u'x'));
    options.database = folder.file(u"garbage.sqlite"_s);
    EXPECT_EQ(run(Command::Checks), ExitCode::Failed);
    EXPECT_TRUE(errors.written.contains(u"garbage.sqlite"_s)) << said().toStdString();
}

TEST_F(ProgramTest, aSaleIsDeliveredReturnedAndInTheLedger)
{
    options.points = till::PointsChoice::all();
    options.waitSeconds = 20;
    EXPECT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::Ok) << said().toStdString();
    EXPECT_TRUE(out.written.endsWith(u"The queue is delivered.\n"_s)) << said().toStdString();
    options.points = {};
    EXPECT_EQ(run(Command::Return, u"return.toml"_s), ExitCode::Ok) << said().toStdString();
    EXPECT_TRUE(out.written.contains(u"Money back: 70.00"_s)) << said().toStdString();
    options.csv = true;
    EXPECT_EQ(run(Command::Ledger), ExitCode::Ok);
    EXPECT_TRUE(out.written.contains(u",****0017,7.00,40.00,0.00,0.00\n"_s))
        << said().toStdString();
    EXPECT_TRUE(out.written.contains(u",****0017,0.00,0.00,20.00,3.50\n"_s))
        << said().toStdString();
    options.csv = false;
    options.json = true;
    EXPECT_EQ(run(Command::Ledger), ExitCode::Ok);
    EXPECT_EQ(QJsonDocument::fromJson(out.written.toUtf8()).array().size(), 2);
}

TEST_F(ProgramTest, theQueueIsSteeredByCommands)
{
    ASSERT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::Ok) << said().toStdString();
    // whether the delivery was quick enough does not matter here: a parked message is left alone
    options.message = 1;
    options.all = true;
    options.json = true;
    EXPECT_EQ(run(Command::QueueList), ExitCode::Ok);
    const QJsonArray messages = QJsonDocument::fromJson(out.written.toUtf8()).array();
    ASSERT_EQ(messages.size(), 1) << said().toStdString();
    EXPECT_EQ(messages.first().toObject().value(u"id"_s).toInt(), 1);
    EXPECT_EQ(run(Command::QueueShow), ExitCode::Ok);
    const QJsonObject shown = QJsonDocument::fromJson(out.written.toUtf8()).object();
    EXPECT_TRUE(shown.value(u"payload"_s).toString().contains(u"<RawCheck>"_s));
    EXPECT_FALSE(said().contains(u"Basic"_s));
    options.json = false;
    EXPECT_EQ(run(Command::QueueDeliver), ExitCode::Ok) << said().toStdString();
    EXPECT_TRUE(out.written.endsWith(u"The queue is delivered.\n"_s)) << said().toStdString();
    EXPECT_EQ(run(Command::QueueReauthorize), ExitCode::Ok) << said().toStdString();
    EXPECT_EQ(out.written, u"0 messages go out with the configured credentials.\n"_s);
}

TEST_F(ProgramTest, quietLeavesOutWhatWentWell)
{
    ASSERT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::Ok) << said().toStdString();
    options.quiet = true;
    options.message = 1;
    EXPECT_EQ(run(Command::QueueDeliver), ExitCode::Ok) << said().toStdString();
    EXPECT_EQ(said(), QString());
    EXPECT_EQ(run(Command::QueueReauthorize), ExitCode::Ok);
    EXPECT_EQ(said(), QString());
    options.waitSeconds = 20;
    EXPECT_EQ(run(Command::Sell, u"nocard.toml"_s), ExitCode::Ok);
    EXPECT_TRUE(out.written.endsWith(u"Paid: 200.00\n"_s)) << said().toStdString();
    EXPECT_EQ(run(Command::QueueShow), ExitCode::Ok);
    EXPECT_TRUE(out.written.contains(u"<RawCheck>"_s)) << said().toStdString();
    options.message = 99;
    EXPECT_EQ(run(Command::QueueRetry), ExitCode::Failed);
    EXPECT_TRUE(errors.written.contains(u"message 99"_s)) << said().toStdString();
}

TEST_F(ProgramTest, checksAreAlsoWrittenAsJson)
{
    options.json = true;
    options.points = till::PointsChoice::all();
    EXPECT_EQ(run(Command::Check, u"sale.toml"_s), ExitCode::Ok) << said().toStdString();
    const QJsonObject asked = QJsonDocument::fromJson(out.written.toUtf8()).object();
    EXPECT_EQ(asked.value(u"loyalty"_s), u"ready"_s) << said().toStdString();
    EXPECT_EQ(asked.value(u"confirmed"_s), false);
    EXPECT_EQ(asked.value(u"card"_s), u"****0017"_s);
    EXPECT_EQ(asked.value(u"spent"_s), u"0.00"_s);

    EXPECT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::Ok) << said().toStdString();
    const QJsonObject sold = QJsonDocument::fromJson(out.written.toUtf8()).object();
    EXPECT_EQ(sold.value(u"kind"_s), u"sale"_s) << said().toStdString();
    EXPECT_EQ(sold.value(u"confirmed"_s), true);
    EXPECT_EQ(sold.value(u"spent"_s), u"40.00"_s);
    EXPECT_EQ(sold.value(u"earned"_s), u"7.00"_s);
    const QJsonObject line = sold.value(u"lines"_s).toArray().first().toObject();
    EXPECT_EQ(line.value(u"quantity"_s), u"2"_s);
    EXPECT_EQ(line.value(u"price"_s), u"100.00"_s);

    EXPECT_EQ(run(Command::Return, u"return.toml"_s), ExitCode::Ok) << said().toStdString();
    const QJsonObject back = QJsonDocument::fromJson(out.written.toUtf8()).object();
    EXPECT_EQ(back.value(u"sale"_s), sold.value(u"id"_s)) << said().toStdString();
    EXPECT_EQ(back.value(u"money"_s), u"70.00"_s);

    EXPECT_EQ(run(Command::Checks), ExitCode::Ok);
    const QJsonArray list = QJsonDocument::fromJson(out.written.toUtf8()).array();
    ASSERT_EQ(list.size(), 2) << said().toStdString();
    EXPECT_EQ(list.at(0).toObject().value(u"kind"_s), u"return"_s);
    EXPECT_EQ(list.at(1).toObject().value(u"state"_s), u"closed"_s);
}

TEST_F(ProgramTest, aJsonSaleWithoutLoyaltyHasItsNotesInside)
{
    server.reachable = false;
    options.json = true;
    EXPECT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::WithoutLoyalty);
    const QJsonObject sold = QJsonDocument::fromJson(out.written.toUtf8()).object();
    EXPECT_EQ(sold.value(u"loyalty"_s), u"refused"_s) << said().toStdString();
    EXPECT_EQ(sold.value(u"refusal"_s), u"Нет связи с сервером"_s);
    EXPECT_EQ(sold.value(u"notes"_s).toArray().size(), 1);
    EXPECT_FALSE(out.written.contains(u"note: "_s));
}
