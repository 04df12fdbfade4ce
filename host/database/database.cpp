// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/database.h"

#include "host/config/knownkeys.h"
#include "host/core/basicexception.h"
#include "host/database/databaseconnection_p.h"
#include "host/database/databaseerror_p.h"
#include "host/database/databasefailure.h"
#include "host/database/databasefile_p.h"
#include "host/database/databaseschema_p.h"
#include "host/database/statement.h"
#include "host/services/config.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QThread>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(logDatabase, "poshost.database", QtInfoMsg)

constexpr size_t maxIdleStatements = 64;
void tightenRights(const QString& file)
{
    struct stat information
    {};
    const QByteArray name = QFile::encodeName(file);
    const mode_t tooMuch = ~databasefile::rightsOf(file) & (S_IRWXG | S_IRWXO);
    if (::stat(name.constData(), &information) != 0 || (information.st_mode & tooMuch) == 0) {
        return;
    }
    const bool tightened = ::chmod(name.constData(), information.st_mode & ~tooMuch & 07777) == 0;
    qCWarning(logDatabase).noquote()
        << (tightened ? u"Файл %1 был доступен другим пользователям; доступ закрыт"_s
                      : u"Файл %1 доступен другим пользователям; закройте доступ (chmod 600)"_s)
               .arg(file);
}

/// Lets those who share a database open it one after the other. SQLite makes the log first and
/// gives the group its rights then: who opened it in between might only read it. Locks the folder,
/// where nothing has to be made for it; without the lock opening goes on, by its own luck.
class OpeningTurn
{
public:
    OpeningTurn(const QString& file, const QDeadlineTimer& deadline)
    {
        if ((databasefile::rightsOf(file) & S_IRWXG) == 0) {
            return;
        }
        const QByteArray folder = QFile::encodeName(QFileInfo(file).absolutePath());
        descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        while (descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 &&
               errno == EWOULDBLOCK && !deadline.hasExpired()) {
            QThread::msleep(1);
        }
    }
    ~OpeningTurn()
    {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }
    OpeningTurn(const OpeningTurn&) = delete;
    OpeningTurn& operator=(const OpeningTurn&) = delete;

private:
    int descriptor = -1;
};

} // namespace

Database::Connection::Connection(const QString& fileName) : file(fileName) {}

Database::Connection::~Connection()
{
    readingWatch.reset();
    idle.clear();
    sqlite3_close_v2(handle);
}

void Database::Connection::open(const QString& name, int flags, int busyMilliseconds)
{
    // only the thread that opened it uses a connection
    if (sqlite3_open_v2(name.toUtf8().constData(), &handle, flags | SQLITE_OPEN_NOMUTEX, nullptr) !=
        SQLITE_OK) {
        fail();
    }
    sqlite3_busy_timeout(handle, busyMilliseconds);
}

PreparedStatement Database::Connection::prepared(const QString& sql)
{
    if (const auto kept = idle.find(sql); kept != idle.end()) {
        PreparedStatement statement = std::move(kept->second);
        idle.erase(kept);
        return statement;
    }
    const QByteArray text = sql.toUtf8();
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v3(handle, text.constData(), static_cast<int>(text.size()),
                           SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK) {
        fail();
    }
    return PreparedStatement(statement);
}

void Database::Connection::keep(const QString& sql, PreparedStatement statement)
{
    if (idle.size() < maxIdleStatements) {
        idle.emplace(sql, std::move(statement));
    }
}

void Database::Connection::fail()
{
    failed = depth > 0;
    const QString cause = QString::fromUtf8(sqlite3_errmsg(handle));
    throw DatabaseFailure(databaseerror::fromSql(file, sqlite3_errcode(handle), cause), file,
                          cause);
}

void Database::Connection::fail(const QString& cause)
{
    failed = depth > 0;
    throw DatabaseFailure(databaseerror::fromSql(file, SQLITE_ERROR, cause), file, cause);
}

void Database::Connection::requireSound() const
{
    if (failed) {
        throw BasicException(databaseerror::transactionFailed(file));
    }
}

void Database::Connection::switchToLog(bool isNew, int busyMilliseconds)
{
    // free pages can be given back bit by bit; later only forgetDeleted changes that
    const char* const sql = isNew ? "PRAGMA auto_vacuum = INCREMENTAL; PRAGMA journal_mode = WAL"
                                  : "PRAGMA journal_mode = WAL";
    const QDeadlineTimer deadline(busyMilliseconds);
    const bool isShared = (databasefile::rightsOf(file) & S_IRWXG) != 0;
    while (sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        const int error = sqlite3_errcode(handle);
        const bool mayPass = error == SQLITE_BUSY || (isShared && error == SQLITE_CANTOPEN);
        if (!mayPass || deadline.hasExpired()) {
            fail();
        }
        QThread::msleep(5);
    }
}

Database::Database(const QString& fileName, int busyMilliseconds)
    : Database(fileName, databaseschema::bringUpToDate, busyMilliseconds)
{}

Database::Database(const QString& fileName, const std::function<void(Database&)>& prepareTables,
                   int busyMilliseconds)
    : connection(std::make_unique<Connection>(QFileInfo(fileName).absoluteFilePath()))
{
    const QString& file = connection->file;
    databasefile::requireNotEmptied(file);
    // until the tables were read: only that opens the log
    const OpeningTurn turn(file, QDeadlineTimer(busyMilliseconds));
    databasefile::createBeside(file);
    const bool isNew = QFileInfo(file).size() == 0;
    connection->open(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, busyMilliseconds);
    connection->switchToLog(isNew, busyMilliseconds);
    execute(u"PRAGMA synchronous = FULL"_s);
    execute(u"PRAGMA foreign_keys = ON"_s);
    // a statement that could fail in the middle would otherwise take 64 KiB for undoing it
    execute(u"PRAGMA temp_store = MEMORY"_s);
    // what is erased is overwritten where that costs no further page
    execute(u"PRAGMA secure_delete = FAST"_s);
    prepareTables(*this);
    for (const QString& part : {file, file + u"-wal"_s, file + u"-shm"_s}) {
        tightenRights(part); // only now: this is the right file and no other
    }
}

Database::~Database() = default;

void Database::execute(const QString& sql)
{
    Statement(*this, sql).execute();
}

bool Database::isInTransaction() const
{
    return connection->depth > 0;
}

QString Database::fileName() const
{
    return connection->file;
}

QString Database::configuredFile()
{
    const Config* config = Singleton<Config>::instance;
    const auto key = knownkeys::find(ConfigKey::Use::Database);
    return config == nullptr || !key ? QString() : config->getString(key->name(), QString());
}

QFileDevice::Permissions Database::rightsOf(const QString& fileName)
{
    using Right = QFileDevice::Permission;
    QFileDevice::Permissions rights = Right::ReadOwner | Right::WriteOwner;
    if ((databasefile::rightsOf(fileName) & S_IWGRP) != 0) {
        rights |= Right::ReadGroup | Right::WriteGroup;
    }
    return rights;
}

int Database::schemaVersion()
{
    return databaseschema::newestVersion();
}

} // namespace poshost
