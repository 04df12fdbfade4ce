// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/databaseerror_p.h"

#include <cstring>
#include <sqlite3.h>

namespace poshost {

using namespace Qt::StringLiterals;

namespace databaseerror {

namespace {

tr::Tr databaseError(const QString& file, const Message& what)
{
    return {u"databaseError"_s, Message::of("database", file, what)};
}

/// What SQLite says, with what to do about it.
Message withAdvice(int resultCode, const QString& cause)
{
    switch (resultCode) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return Message::of("database.busy", cause);
    case SQLITE_READONLY:
        return Message::of("database.readOnly", cause);
    case SQLITE_IOERR:
        return Message::of("database.disk", cause);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return Message::of("database.damaged", cause);
    case SQLITE_FULL:
        return Message::of("database.full", cause);
    case SQLITE_CANTOPEN:
        return Message::of("database.cannotOpen", cause);
    case SQLITE_NOMEM:
        return Message::of("database.noMemory", cause);
    default:
        return Message::of("database.unexpected", cause);
    }
}

} // namespace

tr::Tr fromSql(const QString& file, int resultCode, const QString& cause)
{
    constexpr int primaryCodeMask = 0xff;
    return databaseError(file, withAdvice(resultCode & primaryCodeMask, cause));
}

tr::Tr fromSystem(const QString& file, int systemError)
{
    return databaseError(
        file, Message::of("database.system", QString::fromLocal8Bit(std::strerror(systemError))));
}

tr::Tr leftInTheMiddle(const QString& file)
{
    return databaseError(file, Message::of("database.leftInTheMiddle"));
}

tr::Tr damaged(const QString& file, const QString& said)
{
    // the first line only names the part of the connection that was checked
    const QString cause = said.startsWith("***"_L1) ? said.section(u'\n', 1) : said;
    return fromSql(file, SQLITE_CORRUPT, cause.simplified());
}

tr::Tr tooNew(const QString& file, int fileVersion, int knownVersion)
{
    return databaseError(file, Message::of("database.tooNew", fileVersion, knownVersion));
}

tr::Tr wrongVersion(const QString& file, int fileVersion)
{
    return databaseError(file, Message::of("database.wrongVersion", fileVersion));
}

tr::Tr emptied(const QString& file)
{
    return databaseError(file, Message::of("database.emptied"));
}

tr::Tr transactionFailed(const QString& file)
{
    return databaseError(file, Message::of("database.transactionFailed"));
}

} // namespace databaseerror

} // namespace poshost
