// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The database, the disk that it lies on and the queue in it.

#include "host/queue/outgoingqueue.h"
#include "host/services/dbqueuebroker.h"
#include "tests/support/mocked.h"
#include "tests/unit/host/queue/queued.h"
#include "tests/unit/till/doctor/disk.h"
#include "tests/unit/till/doctor/row.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;
using tests::expectFound;
using tests::Row;
using tests::Scene;

namespace {

const QStringList queue{u"queue."_s};
const QStringList content{u"database.integrity"_s, u"database.schema"_s, u"queue."_s};

/// Queues a message so long ago and does something else to the queue.
std::function<void(Scene&)> queueing(qint64 secondsAgo,
                                     const std::function<void(poshost::Database&)>& more = {})
{
    return [=](const Scene& scene) {
        const tests::StoppedClock clock(QDateTime::currentDateTime().addSecs(-secondsAgo));
        const auto database = QSharedPointer<poshost::Database>::create(scene.databaseFile);
        DBQueueBroker(database).addToQueue(u"orva"_s, queuedMessage(u"<RawCheck/>"_s), {});
        if (more) {
            more(*database);
        }
    };
}

std::function<void(Scene&)> executing(const QString& sql)
{
    return [sql](const Scene& scene) {
        scene.inDatabase([&](poshost::Database& database) { database.execute(sql); });
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

} // namespace

TEST(DoctorFinds, aDatabaseThatCannotBeOpened)
{
    expectFound({
        {"no folder",
         [](Scene& scene) {
             scene.set(u"till.database"_s, Scene::quoted(scene.folder.file(u"absent/till"_s)));
         },
         u"database.file fails"_s, content + QStringList{u"database.rights"_s, u"disk"_s}},
        {"a folder in its place",
         [](Scene& scene) {
             scene.set(u"till.database"_s, Scene::quoted(scene.folder.file(QString())));
         },
         u"database.file fails"_s, content + QStringList{u"database.rights"_s, u"disk"_s}},
        {"something else",
         [](Scene& scene) { scene.folder.write(u"till.sqlite"_s, QByteArray(9000, 'x')); },
         u"database.integrity fails"_s, QStringList{u"database.schema"_s} + queue},
        {"pages of something else", [](Scene& scene) { damage(scene); },
         u"database.integrity fails"_s, QStringList{u"database.schema"_s} + queue},
        {"an impossible version", executing(u"PRAGMA user_version = -3"_s),
         u"database.integrity fails"_s, QStringList{u"database.schema"_s} + queue},
        {"the version of an empty file", executing(u"PRAGMA user_version = 0"_s),
         u"database.integrity fails"_s, QStringList{u"database.schema"_s} + queue},
    });
}

TEST(DoctorFinds, aDatabaseOfAnotherProgram)
{
    expectFound({
        {"a newer one", executing(u"PRAGMA user_version = 99"_s), u"database.schema fails"_s,
         queue},
        {"one of its own",
         [](Scene& scene) {
             QFile::remove(scene.databaseFile);
             scene.folder.write(u"till.sqlite"_s, {}); // an empty database to SQLite
         },
         u"database.schema fails"_s, queue},
    });
}

TEST(DoctorFinds, aDatabaseThatOthersMayOpen)
{
    expectFound({{"its group",
                  [](const Scene& scene) {
                      QFile::setPermissions(scene.databaseFile, QFile::ReadOwner |
                                                                    QFile::WriteOwner |
                                                                    QFile::ReadGroup);
                  },
                  u"database.rights warning"_s}});
}

TEST(DoctorFinds, messagesThatDoNotGoOut)
{
    const auto park = [](poshost::Database& database) { poshost::OutgoingQueue(database).park(1); };
    const auto pause = [](poshost::Database& database) {
        database.execute(u"UPDATE queue_accounts SET paused_status = 401, paused_at = 1"_s);
    };
    expectFound({
        {"for two hours", queueing(2 * 3600), u"queue.oldest warning"_s},
        {"for two days", queueing(48 * 3600), u"queue.oldest fails"_s},
        {"paused for two days", queueing(48 * 3600, pause), u"queue.paused fails"_s},
        {"parked for two days", queueing(48 * 3600, park), u"queue.parked fails"_s},
    });
}

TEST(DoctorFinds, aDiskThatIsFull)
{
    const auto leaving = [](quint64 mebibytes) {
        return [mebibytes](const Scene&) { disk::setFree(mebibytes * 1024 * 1024); };
    };
    expectFound({{"nearly", leaving(100), u"disk warning"_s}});
    disk::setFree(0);
    expectFound({{"quite", leaving(1), u"disk fails"_s}});
    disk::setFree(0);
}

TEST(Doctor, letsAnOlderDatabaseBe)
{
    Scene scene;
    scene.inDatabase([](poshost::Database& database) {
        database.execute(u"DROP INDEX checks_last"_s);
        database.execute(u"CREATE INDEX checks_recent ON checks(state, type, updated_at)"_s);
        database.execute(u"PRAGMA user_version = 3"_s);
    });
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
