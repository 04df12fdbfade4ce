// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/statement.h"

#include "host/database/databaseconnection_p.h"

namespace poshost {

using namespace Qt::StringLiterals;

void FinalizeStatement::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

Statement::Statement(Database& owner, const QString& sql) : database(owner), text(sql)
{
    database.connection->requireSound();
    statement = database.connection->prepared(text);
}

Statement::~Statement()
{
    if (sound) {
        reset();
        database.connection->keep(text, std::move(statement));
    }
}

/// @return SQLite's result code
int Statement::bindAt(int index, const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return sqlite3_bind_null(statement.get(), index);
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::LongLong:
        return sqlite3_bind_int64(statement.get(), index, value.toLongLong());
    case QMetaType::Double:
        return sqlite3_bind_double(statement.get(), index, value.toDouble());
    case QMetaType::QByteArray: {
        const QByteArray& bytes = held.emplace_back(value.toByteArray());
        return sqlite3_bind_blob64(statement.get(), index, bytes.constData(),
                                   static_cast<sqlite3_uint64>(bytes.size()), SQLITE_STATIC);
    }
    default: {
        const QString characters = value.toString();
        return sqlite3_bind_text16(statement.get(), index, characters.constData(),
                                   static_cast<int>(characters.size() * qsizetype(sizeof(QChar))),
                                   SQLITE_TRANSIENT);
    }
    }
}

Statement& Statement::bind(const QVariant& value)
{
    const int result = bindAt(++bound, value);
    if (result != SQLITE_OK && result != SQLITE_RANGE) { // too many are reported when it runs
        fail();
    }
    return *this;
}

/// @return whether there is a row
bool Statement::step()
{
    if (!running) {
        database.connection->requireSound();
        // one without would run with NULL
        if (bound != sqlite3_bind_parameter_count(statement.get())) {
            database.connection->fail(u"%1 values for: %2"_s.arg(bound).arg(text));
        }
        running = true;
    }
    switch (sqlite3_step(statement.get())) {
    case SQLITE_ROW:
        return true;
    case SQLITE_DONE:
        return false;
    default:
        fail();
    }
}

/// What was bound goes too: it may be large, or a secret.
void Statement::reset()
{
    sqlite3_reset(statement.get());
    sqlite3_clear_bindings(statement.get());
    held.clear();
    bound = 0;
    running = false;
}

void Statement::fail()
{
    sound = false;
    database.connection->fail();
}

bool Statement::next()
{
    if (step()) {
        return true;
    }
    reset();
    return false;
}

void Statement::execute()
{
    step();
    reset();
}

QVariant Statement::value(int column) const
{
    sqlite3_stmt* const row = statement.get();
    switch (sqlite3_column_type(row, column)) {
    case SQLITE_INTEGER:
        return static_cast<qint64>(sqlite3_column_int64(row, column));
    case SQLITE_FLOAT:
        return sqlite3_column_double(row, column);
    case SQLITE_NULL:
        return {};
    case SQLITE_BLOB: {
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
        return QByteArray(bytes, sqlite3_column_bytes(row, column));
    }
    default: {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
        return QString::fromUtf8(bytes, sqlite3_column_bytes(row, column));
    }
    }
}

qint64 Statement::lastInsertId() const
{
    return sqlite3_last_insert_rowid(sqlite3_db_handle(statement.get()));
}

int Statement::affectedRows() const
{
    return sqlite3_changes(sqlite3_db_handle(statement.get()));
}

} // namespace poshost
