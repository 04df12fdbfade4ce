// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/filesuspended.h"

#include "host/database/statement.h"
#include "host/database/transaction.h"

using namespace Qt::StringLiterals;
using orvastore::LeftCheck;
using orvastore::StoreEnd;
using orvastore::StoreResult;
using orvastore::TakeUp;
using poshost::Statement;

namespace {

const QString columns = QStringLiteral("SELECT identifier, number, content FROM suspended WHERE ");

StoreResult away()
{
    return {StoreEnd::Unreachable, poshost::Message::plain(u"the store is away"_s)};
}

LeftCheck checkOf(const Statement& row)
{
    LeftCheck check;
    check.identifier = row.value(0).toString();
    check.number = row.value(1).toLongLong();
    check.content = row.value(2).toByteArray();
    return check;
}

} // namespace

void FileSuspended::open(const orvastore::StoreSettings& settings)
{
    const QStringList words = settings.database.split(u' ');
    isAway = words.contains(u"away"_s);
    isUnanswered = words.contains(u"unanswered"_s);
    for (const QString& word : words) {
        if (word.startsWith("file="_L1)) {
            file = word.section(u'=', 1);
        }
    }
}

poshost::Database* FileSuspended::opened()
{
    if (isAway) {
        return nullptr;
    }
    if (!database) {
        database = QSharedPointer<poshost::Database>::create(file);
        database->execute(u"CREATE TABLE IF NOT EXISTS suspended (identifier TEXT PRIMARY KEY, "
                          "number INTEGER, content BLOB, marks TEXT NOT NULL, token TEXT, "
                          "settled INTEGER NOT NULL DEFAULT 0, at INTEGER)"_s);
    }
    return database.get();
}

StoreResult FileSuspended::done(bool isNew) const
{
    return isNew && isUnanswered
               ? StoreResult{StoreEnd::Unknown, poshost::Message::plain(u"no answer"_s)}
               : StoreResult{StoreEnd::Done, {}};
}

StoreResult FileSuspended::leave(const LeftCheck& check)
{
    poshost::Database* const store = opened();
    if (store == nullptr) {
        return away();
    }
    poshost::Transaction transaction(*store);
    Statement known(*store, u"SELECT 1 FROM suspended WHERE identifier = ? AND "
                            "instr(marks, ?) > 0"_s);
    const bool isNew = !known.bind(check.identifier).bind(check.mark).next();
    if (isNew) {
        Statement keep(*store,
                       u"INSERT INTO suspended (identifier, number, content, marks, at) "
                       "VALUES (?, ?, ?, ?, (SELECT coalesce(max(at), 0) + 1 FROM "
                       "suspended)) ON CONFLICT (identifier) DO UPDATE SET "
                       "content = excluded.content, marks = marks || ' ' || excluded.marks, "
                       "token = NULL, settled = 0, at = excluded.at"_s);
        keep.bind(check.identifier)
            .bind(check.number)
            .bind(check.content)
            .bind(check.mark)
            .execute();
    }
    transaction.commit();
    return done(isNew);
}

TakeUp FileSuspended::takeUp(const QString&, const QString& which, const QString&,
                             const QString& token)
{
    TakeUp taken;
    poshost::Database* const store = opened();
    if (store == nullptr) {
        taken.result = away();
        return taken;
    }
    poshost::Transaction transaction(*store);
    {
        Statement before(*store, columns + u"token = ? AND settled = 0"_s);
        if (before.bind(token).next()) {
            taken.check = checkOf(before);
        }
    }
    const bool isNew = !taken.check;
    if (isNew) {
        Statement waiting(*store, columns + u"token IS NULL AND (? = 'last' OR identifier = ?) "
                                            "ORDER BY at DESC LIMIT 1"_s);
        if (waiting.bind(which).bind(which).next()) {
            taken.check = checkOf(waiting);
        }
    }
    if (!taken.check) {
        taken.result = {StoreEnd::Refused, poshost::Message::plain(u"there is none"_s)};
        taken.isOver = true;
        return taken;
    }
    if (isNew) {
        Statement take(*store, u"UPDATE suspended SET token = ? WHERE identifier = ?"_s);
        take.bind(token).bind(taken.check->identifier).execute();
    }
    transaction.commit();
    taken.result = done(isNew);
    return taken;
}

StoreResult FileSuspended::settleTakeUp(const QString&, const QString& token)
{
    poshost::Database* const store = opened();
    if (store == nullptr) {
        return away();
    }
    Statement settle(*store, u"UPDATE suspended SET settled = 1, content = '' WHERE token = ?"_s);
    settle.bind(token).execute();
    return settle.affectedRows() == 1
               ? StoreResult{StoreEnd::Done, {}}
               : StoreResult{StoreEnd::Refused, poshost::Message::of("store.suspendedReleased")};
}

StoreResult FileSuspended::forEachLeft(const QString&,
                                       const std::function<void(const LeftCheck&)>& take)
{
    poshost::Database* const store = opened();
    if (store == nullptr) {
        return away();
    }
    Statement waiting(*store, columns + u"token IS NULL ORDER BY at"_s);
    while (waiting.next()) {
        take(checkOf(waiting));
    }
    return {StoreEnd::Done, {}};
}
