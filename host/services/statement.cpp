// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/statement.h"

#include "host/services/databaseconnection.h"

#include <QByteArray>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace {

/// Qt would write NULL for null texts.
QVariant withoutNullTexts(const QVariant& value)
{
    if (value.typeId() == QMetaType::QString && value.toString().isNull()) {
        return u""_s;
    }
    if (value.typeId() == QMetaType::QByteArray && value.toByteArray().isNull()) {
        return QByteArray("");
    }
    return value;
}

} // namespace

Statement::Statement(Database& owner, const QString& sql) : database(owner), text(sql)
{
    database.connection->requireSound();
    query = database.connection->prepared(text);
}

Statement::~Statement()
{
    if (sound) {
        database.connection->keep(text, std::move(query));
    }
}

Statement& Statement::bind(const QVariant& value)
{
    query->bindValue(bound++, withoutNullTexts(value));
    return *this;
}

void Statement::run()
{
    database.connection->requireSound();
    if (bound != text.count(u'?')) { // a kept statement would run with the values of its last use
        database.connection->fail(QSqlError(u"%1 values for: %2"_s.arg(bound).arg(text)));
    }
    bound = 0;
    if (!query->exec()) {
        fail();
    }
    running = true;
}

void Statement::fail()
{
    sound = false;
    database.connection->fail(query->lastError());
}

bool Statement::next()
{
    if (!running) {
        run();
    }
    if (query->next()) {
        return true;
    }
    running = false;
    if (query->lastError().isValid()) {
        fail();
    }
    query->finish();
    return false;
}

void Statement::execute()
{
    run();
    running = false;
    if (query->isSelect()) {
        query->finish();
    }
}

QVariant Statement::value(int column) const
{
    return query->value(column);
}

qint64 Statement::lastInsertId() const
{
    return query->lastInsertId().toLongLong();
}

int Statement::affectedRows() const
{
    return query->numRowsAffected();
}
