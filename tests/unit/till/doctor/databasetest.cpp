// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The database, the disk that it lies on and the queue in it.

#include "host/queue/outgoingqueue.h"
#include "tests/support/olderdatabase.h"
#include "tests/unit/till/doctor/disk.h"
#include "tests/unit/till/doctor/printedmend.h"
#include "tests/unit/till/doctor/row.h"
#include "till/checks/checkstore.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;
using tests::Row;
using tests::Scene;

namespace {

const QStringList queue{u"queue."_s, u"checks."_s};
const QStringList behindSchema{u"database.schema"_s, u"queue."_s, u"checks."_s};
const QStringList behindFile{u"database."_s, u"disk"_s, u"queue."_s, u"checks."_s, u"service"_s};

std::function<void(Scene&)> executing(const QString& sql)
{
    return [sql](const Scene& scene) {
        scene.inDatabase([&](poshost::Database& database) { database.execute(sql); });
    };
}

/// A sale whose message the server answers so, that long ago.
std::function<void(Scene&)> selling(int status, qint64 hoursAgo, const QString& more = {})
{
    return [=](Scene& scene) {
        simulator::Fault refusal;
        refusal.kind = simulator::FaultKind::Status;
        refusal.status = status;
        scene.strike(refusal, u"paymenttry"_s);
        const QString sale = QStringLiteral(ORVA_EXAMPLES "/sale.toml");
        const QString said = scene.runTill({u"sell"_s, sale, u"--wait"_s, u"1"_s});
        scene.strikeNothing();
        scene.inDatabase([&](poshost::Database& database) {
            database.execute(u"UPDATE queue_messages SET created_at = created_at - %1"_s.arg(
                hoursAgo * 3'600'000));
            if (!more.isEmpty()) {
                database.execute(more);
            }
            const poshost::QueueCounts counts = poshost::OutgoingQueue(database).counts();
            EXPECT_EQ(counts.waiting + counts.paused + counts.parked, 1) << said.toStdString();
        });
    };
}

/// Writes into the middle of the file.
void damage(const Scene& scene)
{
    QFile file(scene.databaseFile);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_GT(file.size(), 3 * 4096);
    file.seek(2 * 4096);
    file.write(QByteArray(4096, '\x5a'));
}

/// As a till leaves it that was stopped in the middle, without the log's index.
void leaveInTheMiddle(const Scene& scene)
{
    const Scene atWork;
    const auto database = QSharedPointer<poshost::Database>::create(atWork.databaseFile);
    till::CheckStore(database).takeNumber();
    for (const QString& end : {u""_s, u"-wal"_s}) {
        QFile::remove(scene.databaseFile + end);
        ASSERT_TRUE(QFile::copy(atWork.databaseFile + end, scene.databaseFile + end));
    }
}

QList<Row> filesThatCannotBeOpened()
{
    const auto naming = [](const QString& file) {
        return [file](Scene& scene) {
            scene.set(u"till.database"_s, Scene::quoted(scene.folder.file(file)));
            // the one in the scene's folder is no longer asked
        };
    };
    const auto permitting = [](const QString& file, QFile::Permissions rights) {
        return [=](Scene& scene) {
            scene.isOrdinaryUser = true;
            scene.write();
            scene.writtenByHand = true;
            QFile::setPermissions(scene.folder.file(file), rights);
        };
    };
    const auto restore = [](Scene& scene) { scene.putRight(); };
    return {
        {"a file in the folder's place", naming(u"orva.toml/till.sqlite"_s),
         u"database.file fails"_s, behindFile, restore},
        {"a folder in its place", naming(QString()), u"database.file fails"_s, behindFile, restore},
        {"a folder that its owner may not change",
         permitting(QString(), QFile::ReadOwner | QFile::ExeOwner), u"database.file fails"_s,
         behindFile},
        {"a file that its owner may not write", permitting(u"till.sqlite"_s, QFile::ReadOwner),
         u"database.file fails"_s, behindFile},
    };
}

QList<Row> contentThatIsNoDatabase()
{
    return {
        {"something else",
         [](Scene& scene) { scene.folder.write(u"till.sqlite"_s, QByteArray(9000, 'x')); },
         u"database.integrity fails"_s, behindSchema},
        {"pages of something else", [](Scene& scene) { damage(scene); },
         u"database.integrity fails"_s, behindSchema},
        {"an impossible version", executing(u"PRAGMA user_version = -3"_s),
         u"database.integrity fails"_s, behindSchema},
        {"the version of an empty file", executing(u"PRAGMA user_version = 0"_s),
         u"database.integrity fails"_s, behindSchema},
        {"a log without its index", [](Scene& scene) { leaveInTheMiddle(scene); },
         u"database.integrity fails"_s, behindSchema},
        {"a newer program's", executing(u"PRAGMA user_version = 99"_s), u"database.schema fails"_s,
         queue},
        {"nothing", [](Scene& scene) { scene.folder.write(u"till.sqlite"_s, {}); },
         u"database.schema fails"_s, queue},
        {"another program's", executing(u"ALTER TABLE queue_messages RENAME TO goods"_s),
         u"database.schema fails"_s, queue},
    };
}

QList<Row> databasesThatOthersMayOpen()
{
    const auto open = [](QFile::Permissions more) {
        return [more](const Scene& scene) {
            QFile::setPermissions(scene.databaseFile, QFile::ReadOwner | QFile::WriteOwner | more);
        };
    };
    return {{"its group", open(QFile::ReadGroup), u"database.rights warning"_s},
            {"everybody", open(QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther),
             u"database.rights warning"_s}};
}

QList<Row> whatWaits()
{
    return {
        {"for two hours", selling(500, 2), u"queue.oldest warning"_s},
        {"for two days", selling(500, 48), u"queue.oldest fails"_s},
        {"for two hours, and nobody has tried",
         selling(500, 2,
                 u"UPDATE queue_messages SET attempts = 0, step_attempts = 0, server_errors = 0, "
                 "next_attempt_at = NULL"_s),
         u"queue.oldest warning"_s},
        {"for other credentials", selling(401, 48), u"queue.paused fails"_s},
        {"for somebody to decide",
         selling(424, 48),
         u"queue.parked fails"_s,
         {},
         [](const Scene& scene) {
             scene.runTill({u"queue"_s, u"retry"_s, u"1"_s});
             scene.runTill({u"queue"_s, u"deliver"_s});
         }},
        {"a suspended check",
         [](const Scene& scene) {
             const QByteArray sale = QFile::encodeName(QStringLiteral(ORVA_EXAMPLES "/sale.toml"));
             const QString said =
                 scene.runTill({u"work"_s}, "open " + sale + "\nrequest\nsuspend\nquit\n");
             EXPECT_FALSE(said.contains(u"error:"_s)) << said.toStdString();
             scene.inDatabase([](poshost::Database& database) {
                 database.execute(u"UPDATE checks SET updated_at = updated_at - 90000000"_s);
             });
         },
         u"checks.suspended warning"_s,
         {},
         [](const Scene& scene) { scene.runTill({u"work"_s}, "restore last\nabandon\nquit\n"); }},
        {"a check on its way to the store",
         executing(u"INSERT INTO leavings (check_id, number, mark, begun_at, content) "
                   "VALUES ('a', 1, 'b', 1790000000000, x'00')"_s),
         u"checks.suspended warning"_s,
         {},
         executing(u"DELETE FROM leavings"_s)},
        {"a check on its way from the store",
         executing(u"INSERT INTO takeups (token, which) VALUES ('a', 'last')"_s),
         u"checks.suspended warning"_s,
         {},
         executing(u"DELETE FROM takeups"_s)},
    };
}

QList<Row> fullDisks()
{
    const auto leaving = [](quint64 mebibytes) {
        return [mebibytes](const Scene&) { disk::setFree(mebibytes * 1024 * 1024); };
    };
    return {{"nearly full", leaving(100), u"disk warning"_s},
            {"full", leaving(1), u"disk fails"_s}};
}

} // namespace

QList<tests::Ways> tests::databaseWays()
{
    return {{"databasesThatCannotBeOpened", filesThatCannotBeOpened},
            {"contentThatIsNoDatabase", contentThatIsNoDatabase},
            {"databasesThatOthersMayOpen", databasesThatOthersMayOpen},
            {"whatWaitsTooLong", whatWaits},
            {"disksThatAreFull", fullDisks}};
}

TEST(Doctor, hasTheDatabasesFolderMade)
{
    Scene scene;
    const QString database = scene.folder.file(u"new folder/it's/till.sqlite"_s);
    scene.set(u"till.database"_s, Scene::quoted(database));
    const till::doctor::Report broken = scene.examine();
    EXPECT_EQ(broken.count(till::doctor::Mark::Fails), 1) << broken.text().toStdString();
    EXPECT_EQ(Scene::marksOf(broken).value(u"database.file"_s), u"fails"_s);
    tests::PrintedMend(broken.text()).runAsPrinted({});
    const poshost::QueueBell service(database);
    const till::doctor::Report mended = scene.examine();
    EXPECT_EQ(mended.count(till::doctor::Mark::Fails), 0) << mended.text().toStdString();
    EXPECT_EQ(mended.count(till::doctor::Mark::Warning), 0) << mended.text().toStdString();
}

TEST(Doctor, letsAnOlderDatabaseBe)
{
    Scene scene;
    scene.inDatabase(tests::makeOlder);
    const till::doctor::Report report = scene.examine();
    EXPECT_EQ(report.count(till::doctor::Mark::Fails), 0) << report.text().toStdString();
    EXPECT_EQ(Scene::marksOf(report).value(u"database.schema"_s), u"skipped"_s);
    const auto database =
        poshost::Database::openForReading(scene.databaseFile, QDeadlineTimer(1000));
    EXPECT_EQ(Scene::marksOf(scene.examine()).value(u"database.schema"_s), u"skipped"_s)
        << "it was brought up to date";
}

TEST(Doctor, takesADatabaseThatIsNotMadeYetForRight)
{
    Scene scene;
    QFile::remove(scene.databaseFile);
    const till::doctor::Report report = scene.examine();
    EXPECT_EQ(report.count(till::doctor::Mark::Fails), 0) << report.text().toStdString();
    EXPECT_EQ(Scene::marksOf(report).value(u"database.file"_s), u"ok"_s);
    EXPECT_FALSE(QFile::exists(scene.databaseFile));
}
