// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/database.h"

#include "simulator/ledger/schema.h"
#include "simulator/text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QUuid>

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

void createFile(const QString& path)
{
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(folder)) {
        throw DatabaseError(Text::tr("The folder %1 for the database cannot be made").arg(folder));
    }
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        throw DatabaseError(
            Text::tr("The database %1 cannot be opened: %2")
                .arg(path, QString::fromStdString(std::generic_category().message(errno))));
    }
    ::close(descriptor);
}

} // namespace

Database::Database(const QString& path, Open mode)
    : file(path), connectionName(QUuid::createUuid().toString())
{
    if (!QFileInfo::exists(path)) {
        if (mode == Open::ExistingOnly) {
            throw DatabaseError(
                Text::tr("There is no database %1: start orva-simulator first or name "
                         "another file with --database")
                    .arg(path));
        }
        createFile(path);
    }
    try {
        connect();
        prepareSchema();
    } catch (...) {
        connection = QSqlDatabase();
        QSqlDatabase::removeDatabase(connectionName);
        throw;
    }
}

Database::~Database()
{
    connection.close();
    connection = QSqlDatabase();
    QSqlDatabase::removeDatabase(connectionName);
}

void Database::connect()
{
    connection = QSqlDatabase::addDatabase(u"QSQLITE"_s, connectionName);
    connection.setDatabaseName(file);
    connection.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT=10000"_s);
    if (!connection.open()) {
        fail(u"cannot be opened"_s, connection.lastError().text());
    }
    run(u"PRAGMA journal_mode=WAL"_s);
    run(u"PRAGMA synchronous=FULL"_s);
    run(u"PRAGMA foreign_keys=ON"_s);
}

void Database::prepareSchema()
{
    Transaction transaction(*this);
    const auto number = [this](const QString& statement) {
        QSqlQuery query = run(statement);
        return query.next() ? query.value(0).toInt() : 0;
    };
    const int version = number(u"PRAGMA user_version"_s);
    const int application = number(u"PRAGMA application_id"_s);
    const bool empty = number(u"SELECT count(*) FROM sqlite_master"_s) == 0;
    if (empty && version == 0) {
        for (const QString& statement : schemaStatements()) {
            run(statement);
        }
    } else if (application != applicationId) {
        throw DatabaseError(Text::tr("The database %1 is not a database of orva-simulator: name "
                                     "another file with --database")
                                .arg(file));
    } else if (version > schemaVersion) {
        throw DatabaseError(
            Text::tr("The database %1 was written by a newer orva-simulator: it has schema version "
                     "%2, this program knows %3; use the newer program or name another file with "
                     "--database")
                .arg(file, QString::number(version), QString::number(schemaVersion)));
    }
    transaction.commit();
}

QSqlQuery Database::run(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(connection);
    query.setForwardOnly(true);
    if (!query.prepare(statement)) {
        fail(u"refused a statement"_s, query.lastError().text());
    }
    for (const QVariant& value : values) {
        query.addBindValue(value);
    }
    if (!query.exec()) {
        fail(u"refused a statement"_s, query.lastError().text());
    }
    return query;
}

void Database::fail(const QString& what, const QString& text) const
{
    throw DatabaseError(u"The database %1 %2: %3"_s.arg(file, what, text.simplified()));
}

Database::Transaction::Transaction(Database& database) : owner(database)
{
    owner.run(u"BEGIN IMMEDIATE"_s);
}

Database::Transaction::~Transaction()
{
    if (open) {
        QSqlQuery(owner.connection).exec(u"ROLLBACK"_s);
    }
}

void Database::Transaction::commit()
{
    owner.run(u"COMMIT"_s);
    open = false;
}

} // namespace simulator
