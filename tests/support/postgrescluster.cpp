// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/postgrescluster.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QThread>

#include <csignal>
#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <sys/shm.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Far above what a start takes, far below the limit of a test.
constexpr int longestWait = 20'000;
constexpr int betweenLooks = 10;

/// The server refuses to run as root: then it runs as the user of its package.
QStringList asServerUser(const QStringList& command)
{
    if (geteuid() != 0) {
        return command;
    }
    return QStringList{u"setpriv"_s, u"--reuid=postgres"_s, u"--regid=postgres"_s,
                       u"--clear-groups"_s, u"--pdeathsig=QUIT"_s} +
           command;
}

/// @return what it has printed; a failure of the test when it did not end well
QString ranWell(const QStringList& command)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(QDir::tempPath());
    process.start(command.first(), command.mid(1));
    const bool ended = process.waitForFinished(3 * longestWait);
    const QString printed = QString::fromUtf8(process.readAll());
    EXPECT_TRUE(ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        << qPrintable(command.join(u' ')) << '\n'
        << qPrintable(printed);
    return printed;
}

void give(const QString& folder)
{
    if (geteuid() == 0) {
        ranWell({u"chown"_s, u"-R"_s, u"postgres:postgres"_s, folder});
    }
}

/// A server that is killed leaves its segment of shared memory, and a machine has room for some
/// thousands of them. The seventh line of its file names it: key and number.
void removeSegmentOf(const QString& dataFolder)
{
    constexpr int lineOfSegment = 7;
    QFile file(dataFolder + u"/postmaster.pid"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    bool isNumber = false;
    const int segment = file.readAll()
                            .split('\n')
                            .value(lineOfSegment - 1)
                            .simplified()
                            .split(' ')
                            .last()
                            .toInt(&isNumber);
    if (isNumber) {
        ::shmctl(segment, IPC_RMID, nullptr);
    }
}

struct EndOfSession
{
    void operator()(PGconn* session) const { PQfinish(session); }
};
using Session = std::unique_ptr<PGconn, EndOfSession>;

struct EndOfAnswer
{
    void operator()(PGresult* answer) const { PQclear(answer); }
};
using Answer = std::unique_ptr<PGresult, EndOfAnswer>;

/// A session of the tests' own beside the connections that are tried.
Session openedBy(const QString& connection)
{
    Session session(PQconnectdb(connection.toUtf8().constData()));
    EXPECT_EQ(PQstatus(session.get()), CONNECTION_OK) << PQerrorMessage(session.get());
    // notices would stand among what a test prints
    PQsetNoticeProcessor(
        session.get(), [](void*, const char*) {}, nullptr);
    return session;
}

/// An initialised folder, made once for all tests of a build and copied for each cluster.
QString madeOnce()
{
    const QString made = QStringLiteral(ORVA_POSTGRES_TEMPLATE);
    QLockFile lock(made + u".lock"_s);
    lock.lock();
    if (!QFile::exists(made + u"/PG_VERSION"_s)) {
        const QTemporaryDir place;
        give(place.path());
        ranWell(
            asServerUser({PostgresCluster::program(u"initdb"_s), u"-D"_s, place.filePath(u"data"_s),
                          u"-U"_s, u"postgres"_s, u"-A"_s, u"trust"_s, u"-E"_s, u"UTF8"_s,
                          u"--locale=C.UTF-8"_s, u"--no-sync"_s}));
        ranWell({u"rm"_s, u"-rf"_s, made});
        ranWell({u"cp"_s, u"-a"_s, place.filePath(u"data"_s), made});
    }
    return made;
}

} // namespace

PostgresCluster::PostgresCluster(Copy) {}

PostgresCluster::PostgresCluster(const QByteArray& settings) : PostgresCluster(Copy())
{
    ranWell({u"cp"_s, u"-a"_s, madeOnce(), dataFolder()});
    configure(settings);
    start();
}

PostgresCluster::~PostgresCluster()
{
    if (::testing::Test::HasFailure() && qEnvironmentVariableIsSet("ORVA_SHOW_POSTGRES_LOG")) {
        qWarning().noquote() << log();
    }
    kill();
    removeSegmentOf(dataFolder());
}

void PostgresCluster::configure(const QByteArray& settings)
{
    ownSettings = settings;
    QFile file(dataFolder() + u"/postgresql.auto.conf"_s);
    EXPECT_TRUE(file.open(QIODevice::Append));
    file.write("listen_addresses = '127.0.0.1'\nport = " + QByteArray::number(port()) +
               "\nunix_socket_directories = ''\nmax_connections = 80\nmax_wal_senders = 5\n"
               "wal_level = replica\nhot_standby = on\nlogging_collector = off\n"
               // what a killed server has of it goes with the folder
               "dynamic_shared_memory_type = mmap\n"
               "wal_receiver_timeout = '5s'\nwal_sender_timeout = '5s'\n" +
               settings + '\n');
    file.close();
    give(folder.path());
}

std::unique_ptr<PostgresCluster> PostgresCluster::makeStandby(const QString& name) const
{
    std::unique_ptr<PostgresCluster> standby(new PostgresCluster(Copy()));
    give(standby->folder.path());
    ranWell(asServerUser({program(u"pg_basebackup"_s), u"-d"_s, connection(), u"-D"_s,
                          standby->dataFolder(), u"--checkpoint=fast"_s, u"--no-sync"_s}));
    const QFile mark(standby->dataFolder() + u"/standby.signal"_s);
    ranWell({u"touch"_s, mark.fileName()});
    standby->configure(ownSettings + "\nprimary_conninfo = '" + connection().toUtf8() +
                       " application_name=" + name.toUtf8() + "'\nsynchronous_standby_names = ''");
    standby->start();
    return standby;
}

QString PostgresCluster::connection(const QString& user, const QString& database) const
{
    return u"host=127.0.0.1 port=%1 user=%2 dbname=%3"_s.arg(port()).arg(user, database);
}

QString PostgresCluster::connectionBefore(const PostgresCluster& other, const QString& user) const
{
    return u"host=127.0.0.1,127.0.0.1 port=%1,%2 user=%3 dbname=postgres"_s.arg(port())
        .arg(other.port())
        .arg(user);
}

QString PostgresCluster::sql(const QString& statements, const QString& database) const
{
    const Session session = openedBy(connection(u"postgres"_s, database) +
                                     u" connect_timeout=%1"_s.arg(longestWait / 1000));
    QByteArrayList rows;
    EXPECT_EQ(PQsendQuery(session.get(), statements.toUtf8().constData()), 1)
        << PQerrorMessage(session.get());
    while (const Answer answer{PQgetResult(session.get())}) {
        const ExecStatusType status = PQresultStatus(answer.get());
        EXPECT_TRUE(status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK ||
                    status == PGRES_EMPTY_QUERY)
            << qPrintable(statements) << '\n'
            << PQresultErrorMessage(answer.get());
        for (int row = 0; row < PQntuples(answer.get()); ++row) {
            QByteArrayList fields;
            for (int column = 0; column < PQnfields(answer.get()); ++column) {
                fields.append(PQgetvalue(answer.get(), row, column));
            }
            rows.append(fields.join('|'));
        }
    }
    return QString::fromUtf8(rows.join('\n')).trimmed();
}

void PostgresCluster::set(const QString& name, const QString& value) const
{
    sql(u"ALTER SYSTEM SET %1 = '%2'"_s.arg(name, value));
    sql(u"SELECT pg_reload_conf()"_s);
}

bool PostgresCluster::waitFor(const QString& query, const QString& answer) const
{
    const QDeadlineTimer deadline(longestWait);
    while (!deadline.hasExpired()) {
        if (sql(query) == answer) {
            return true;
        }
        QThread::msleep(betweenLooks);
    }
    return false;
}

void PostgresCluster::start()
{
    server.setStandardOutputFile(folder.filePath(u"log"_s), QIODevice::Append);
    server.setProcessChannelMode(QProcess::MergedChannels);
    server.setWorkingDirectory(folder.path());
    QFile::remove(dataFolder() + u"/postmaster.pid"_s);
    const QStringList command = asServerUser({program(u"postgres"_s), u"-D"_s, dataFolder()});
    const QDeadlineTimer deadline(longestWait);
    do {
        server.start(command.first(), command.mid(1));
        EXPECT_TRUE(server.waitForStarted(longestWait));
        while (!isReady() && !deadline.hasExpired() && server.state() == QProcess::Running) {
            server.waitForFinished(betweenLooks);
        }
        // the children of one that was killed may still be on their way out
    } while (server.state() != QProcess::Running && !deadline.hasExpired() &&
             log().contains(u"is still in use"_s));
    EXPECT_TRUE(isReady()) << qPrintable(log());
}

bool PostgresCluster::isReady() const
{
    return PQping(connection().toUtf8().constData()) == PQPING_OK;
}

QString PostgresCluster::log() const
{
    QFile file(folder.filePath(u"log"_s));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The postmaster's children lead sessions of their own, so they are found by their parent.
void PostgresCluster::signalAll(int number) const
{
    const auto postmaster = static_cast<pid_t>(server.processId());
    if (postmaster == 0) {
        return;
    }
    QFile children(u"/proc/%1/task/%1/children"_s.arg(postmaster));
    QList<QByteArray> all;
    ::kill(postmaster, number == SIGCONT ? SIGCONT : SIGSTOP); // it starts no other meanwhile
    if (children.open(QIODevice::ReadOnly)) {
        all = children.readAll().split(' ');
    }
    for (const QByteArray& child : all) {
        const pid_t process = child.trimmed().toInt();
        if (process > 1) {
            ::kill(process, number);
        }
    }
    ::kill(postmaster, number);
}

void PostgresCluster::kill()
{
    if (server.state() != QProcess::NotRunning) {
        signalAll(SIGKILL);
        server.waitForFinished(longestWait);
    }
}

void PostgresCluster::freeze()
{
    signalAll(SIGSTOP);
}

void PostgresCluster::thaw()
{
    signalAll(SIGCONT);
}

void PostgresCluster::promote()
{
    sql(u"SELECT pg_promote(true, 20)"_s);
    EXPECT_TRUE(waitFor(u"SELECT pg_is_in_recovery()"_s, u"f"_s));
}

QString PostgresCluster::program(const QString& name)
{
    return QStringLiteral(ORVA_POSTGRES_PROGRAMS) + u'/' + name;
}
