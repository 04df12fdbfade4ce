// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/sharing/reservations.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/services/currenttime.h"
#include "till/failure.h"
#include "till/text.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// Longer than a closing takes, and than the store is waited for.
constexpr qint64 ownMilliseconds = 60'000;

/// What the store is to be told of: returns with whether they are closed.
using Due = QList<std::pair<QString, bool>>;

/// Marks what is to be given back before the store is told, so that it closes no more.
Due markDue(poshost::Database& database)
{
    poshost::Transaction transaction(database);
    // not before: what another process has noted while this one waited for the right to write would
    // seem to come from the future, as after a clock was put back
    const qint64 now = CurrentTime::milliseconds();
    // of a check that another till has closed meanwhile nothing is given back
    database.execute(u"UPDATE return_reservations SET state = 'closed' WHERE EXISTS "
                     "(SELECT 1 FROM checks WHERE id = check_id AND checks.state = 'closed')"_s);
    poshost::Statement mark(
        database, u"UPDATE return_reservations SET state = 'releasing' WHERE state = 'held' AND "
                  "(noted_at <= ?1 - ?2 OR noted_at > ?1 OR NOT EXISTS (SELECT 1 FROM checks "
                  "WHERE id = check_id AND checks.state IN ('open', 'suspended')))"_s);
    mark.bind(now).bind(ownMilliseconds).execute();
    Due due;
    {
        poshost::Statement marked(database,
                                  u"SELECT check_id, state = 'closed' FROM return_reservations "
                                  "WHERE state <> 'held' ORDER BY noted_at"_s);
        while (marked.next()) {
            due.append({marked.value(0).toString(), marked.value(1).toBool()});
        }
    }
    transaction.commit();
    return due;
}

} // namespace

void Reservations::note(const QString& checkId)
{
    poshost::Statement statement(database,
                                 u"INSERT INTO return_reservations (check_id, state, noted_at) "
                                 "VALUES (?, 'held', ?) ON CONFLICT (check_id) DO UPDATE "
                                 "SET noted_at = excluded.noted_at WHERE state = 'held'"_s);
    statement.bind(checkId).bind(CurrentTime::milliseconds()).execute();
    if (statement.affectedRows() != 1) {
        throw Failure(Text::tr("What this return takes back is being given free; abandon it and "
                               "open it again."));
    }
}

void Reservations::use(const QString& checkId)
{
    poshost::Statement statement(database, u"UPDATE return_reservations SET state = 'closed' "
                                           "WHERE check_id = ? AND state = 'held'"_s);
    statement.bind(checkId).execute();
    if (statement.affectedRows() != 1) {
        throw Failure(Text::tr("What this return takes back was given free meanwhile; abandon it "
                               "and open it again."));
    }
}

std::optional<qint64> Reservations::nextDue(poshost::Database& database)
{
    poshost::Statement statement(
        database, u"SELECT min(CASE WHEN r.state <> 'held' OR c.id IS NULL OR r.noted_at > ?1 OR "
                  "c.state NOT IN ('open', 'suspended') THEN 0 ELSE r.noted_at + ?2 END) "
                  "FROM return_reservations r LEFT JOIN checks c ON c.id = r.check_id"_s);
    statement.bind(CurrentTime::milliseconds()).bind(ownMilliseconds);
    if (!statement.next() || statement.value(0).isNull()) {
        return std::nullopt;
    }
    return statement.value(0).toLongLong();
}

orvastore::StoreResult Reservations::releaseDue(poshost::Database& database,
                                                orvastore::SharedBooks& books, const QString& shop)
{
    const Due due = markDue(database);
    for (const auto& [id, isClosed] : due) {
        const orvastore::StoreResult result =
            isClosed ? books.settleReturn(shop, id) : books.release(shop, id);
        if (result.end != orvastore::StoreEnd::Done) {
            return result;
        }
        poshost::Statement forget(database,
                                  u"DELETE FROM return_reservations WHERE check_id = ?"_s);
        forget.bind(id).execute();
    }
    return {orvastore::StoreEnd::Done, {}};
}

} // namespace till
