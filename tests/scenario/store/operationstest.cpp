// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The commands of docs/operations.md, as they stand there and in their order.

#include "tests/scenario/store/ledgerserver.h"
#include "tests/support/program.h"
#include "tests/support/testfolder.h"
#include "tests/unit/store/storefixture.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <atomic>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// The blocks of commands behind a heading; without one, all of them.
QStringList blocksOf(const QString& heading = {})
{
    QFile page(QStringLiteral(ORVA_OPERATIONS));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(page.readAll());
    if (!heading.isEmpty()) {
        EXPECT_EQ(text.count(heading + u'\n'), 1) << qPrintable(heading);
        text = text.section(heading + u'\n', 1).section(u"\n#"_s, 0, 0);
    }
    static const QRegularExpression block(u"```sh\\n(.*?)```"_s,
                                          QRegularExpression::DotMatchesEverythingOption);
    QStringList blocks;
    for (const QRegularExpressionMatch& match : block.globalMatch(text)) {
        blocks.append(match.captured(1));
    }
    return blocks;
}

QString beginning()
{
    return u"set -eu\nexport PATH=%1:%2:$PATH\ncd \"$(dirname \"$0\")\"\n"_s.arg(
        QFileInfo(PostgresCluster::program(u"psql"_s)).path(),
        QFileInfo(QStringLiteral(ORVA_STORE)).path());
}

/// Runs a script as somebody whom the server lets start it.
void expectRuns(const TestFolder& folder, const QString& script, QString& printed)
{
    QStringList command{u"bash"_s, folder.write(u"operations.sh"_s, script)};
    if (geteuid() == 0) { // the server refuses to run as root
        runProgram(u"chown"_s, {u"-R"_s, u"postgres:postgres"_s, folder.file({})}, u"/"_s);
        command = QStringList{u"setpriv"_s, u"--reuid=postgres"_s, u"--regid=postgres"_s,
                              u"--clear-groups"_s} +
                  command;
    }
    QProcess shell;
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start(command.first(), command.mid(1));
    constexpr int longest = 540'000; // it restarts servers a dozen times
    const bool ended = shell.waitForFinished(longest);
    printed = QString::fromUtf8(shell.readAll());
    EXPECT_TRUE(ended && shell.exitCode() == 0) << qPrintable(printed);
}

/// What a till says to hand over the check that the variable "name" names.
QString handingOver(const QString& address)
{
    return u"SELECT orva.hand_over('5', :'name', 'till1', 1, extract(epoch FROM now())::bigint * "
           "1000, 'lane', '', 'content', 'Orva', '', '{}', '{\"0\":\"%1\"}', convert_to(:'name', "
           "'UTF8'), 'Basic x', 1, 0, 0, 0)\n"_s.arg(address);
}

QString handOver(const QString& name)
{
    return u"psql -h \"$PWD\" -p 5433 -U owner -v name=%1 -f hand.sql orva\n"_s.arg(name);
}

} // namespace

TEST(Operations, theCommandsOfThePageDoWhatItSays)
{
    LedgerServer server;
    QString script = beginning() + u"trap 'for d in primary standby; do pg_ctl -D $d -m immediate "
                                   "stop; done' EXIT\nset -x\n"_s;
    const QStringList blocks = blocksOf();
    ASSERT_GE(blocks.size(), 7);
    int copies = 0;
    for (const QString& block : blocks) {
        if (block.contains(u"pg_dump"_s)) { // between these lines the shop sells on
            const qsizetype behind = block.indexOf(u'\n') + 1;
            script += handOver(u"known"_s) + handOver(u"another"_s) + block.first(behind) +
                      u"orva-store --config worker.toml work --until-empty\n"_s +
                      handOver(u"unsent"_s) + block.mid(behind);
            ++copies;
        } else {
            script += block;
        }
        if (block.contains(u"RENAME TO"_s)) {
            script += u"psql -h \"$PWD\" -p 5433 -U owner -qtA -c \"SELECT 'waiting ', (SELECT "
                      "count(*) FROM orva.ready), 'parked ', (SELECT count(*) FROM orva.parked), "
                      "'checks ', string_agg(identifier, ' ' ORDER BY identifier) FROM "
                      "orva.checks\" orva\n"_s +
                      handOver(u"known"_s) + handOver(u"later"_s) +
                      u"orva-store --config worker.toml work --until-empty\n"_s;
            ++copies;
        }
    }
    ASSERT_EQ(copies, 2);
    const TestFolder folder;
    folder.write(u"hand.sql"_s, handingOver(server.address()));
    QString printed;
    expectRuns(folder, script + u"echo all of it\n"_s, printed);
    EXPECT_TRUE(printed.contains(u"\nall of it\n"_s)) << qPrintable(printed);
    EXPECT_TRUE(printed.contains(u"A standby confirms each commit."_s));
    EXPECT_TRUE(printed.contains(u"waiting |0|parked |0|checks |another known\n"_s))
        << qPrintable(printed);
    EXPECT_EQ(server.booked(), (QList<QByteArray>{"known", "another", "later"}))
        << "the points of what was missing are not booked by themselves";
    EXPECT_EQ(server.repeated(), 2) << "what was delivered since the copy";
}

TEST(Operations, anUpgradeDisturbsNeitherTillsNorWorkersOfEitherVersion)
{
    constexpr int former = orvastore::storeschema::newest - 1;
    const QString database = storetest::freshDatabase();
    const auto settings =
        storetest::settingsFor(storetest::sharedCluster().connection(u"postgres"_s, database), 60);
    orvastore::Connection owner(settings, {});
    orvastore::storeschema::migrate(owner, former);

    orvastore::Connection worker(settings, {.byIndexes = true});
    orvastore::DeliveryBook book(worker, u"worker"_s, 1);
    std::atomic<bool> ending = false;
    std::atomic<int> handed = 0;
    std::atomic<int> delivered = 0;
    std::thread till([&] { // its session has prepared what it says before the upgrade
        orvastore::PostgresStore store;
        store.open(settings);
        while (!ending) {
            const QString name = QString::number(handed);
            const auto result = store.handOver({storetest::checkOf(name, u"card"_s)}).first();
            EXPECT_EQ(result.end, orvastore::StoreEnd::Done) << qPrintable(result.error.ru());
            ++handed;
        }
    });
    const auto deliverUntil = [&](int count) {
        while (delivered < count) {
            if (const std::optional<orvastore::Task> task = book.claim()) {
                const auto done = storetest::resultOf(poshost::deliverypolicy::Meaning::StepDone);
                EXPECT_TRUE(book.finish(*task, done, false).isWritten);
                ++delivered;
            }
        }
    };
    deliverUntil(3);
    const TestFolder folder;
    folder.write(u"owner.toml"_s, u"[store]\ndatabase = \"%1\"\n"_s.arg(settings.database));
    QString printed;
    const QStringList blocks = blocksOf(u"## Upgrading"_s);
    EXPECT_EQ(blocks.size(), 1);
    expectRuns(folder, beginning() + blocks.join(QString()), printed);
    EXPECT_EQ(orvastore::storeschema::versionOf(owner), orvastore::storeschema::newest);
    deliverUntil(handed + 3);
    ending = true;
    till.join();
    deliverUntil(handed);
    EXPECT_EQ(owner.run("SELECT count(*) FROM orva.messages").number(0, 0), handed);
    EXPECT_EQ(owner.run("SELECT count(*) FROM orva.deliveries").number(0, 0), handed);
    EXPECT_LE(owner.run("SELECT usable_from FROM orva.versions ORDER BY version DESC LIMIT 1")
                  .number(0, 0),
              former)
        << "programs of the former version would refuse the tables";
}
