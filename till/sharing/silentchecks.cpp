// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/sharing/silentchecks.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/services/currenttime.h"
#include "till/checks/closedchecks.h"

#include <QLoggingCategory>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace till {
namespace {

Q_LOGGING_CATEGORY(logSharing, "poshost.sharing", QtInfoMsg)

/// Messages wait behind these.
constexpr int checksAtOnce = 16;
constexpr qint64 refusedMilliseconds = 60'000;
/// Repeating what contradicts another till ends in the same way until a person has decided.
constexpr qint64 conflictMilliseconds = 3'600'000;

QStringList dueChecks(poshost::Database& database)
{
    poshost::Statement due(
        database,
        u"SELECT check_id FROM silent_checks WHERE next_try <= ?1 "
        "OR next_try > ?1 + ?2 ORDER BY rowid LIMIT ?3"_s); // clocks are put back
    due.bind(CurrentTime::milliseconds()).bind(conflictMilliseconds).bind(checksAtOnce);
    QStringList checks;
    while (due.next()) {
        checks.append(due.value(0).toString());
    }
    return checks;
}

void forget(poshost::Database& database, const QString& checkId)
{
    poshost::Statement statement(database, u"DELETE FROM silent_checks WHERE check_id = ?"_s);
    statement.bind(checkId).execute();
}

void postpone(poshost::Database& database, const QString& checkId,
              const orvastore::StoreResult& refusal)
{
    qCWarning(logSharing).noquote() << u"Чек %1: %2"_s.arg(checkId, refusal.error.ru());
    poshost::Statement statement(
        database, u"UPDATE silent_checks SET next_try = ?, error = ? WHERE check_id = ?"_s);
    statement
        .bind(CurrentTime::milliseconds() +
              (refusal.isConflict ? conflictMilliseconds : refusedMilliseconds))
        .bind(refusal.error.stored())
        .bind(checkId)
        .execute();
}

} // namespace

std::optional<qint64> silentchecks::nextDue(poshost::Database& database)
{
    poshost::Statement statement(database, u"SELECT min(CASE WHEN next_try > ?1 + ?2 THEN 0 "
                                           "ELSE next_try END) FROM silent_checks"_s);
    statement.bind(CurrentTime::milliseconds()).bind(conflictMilliseconds);
    if (!statement.next() || statement.value(0).isNull()) {
        return std::nullopt;
    }
    return statement.value(0).toLongLong();
}

orvastore::StoreResult silentchecks::handOver(poshost::Database& database,
                                              orvastore::SharedBooks& books, const QString& shop)
{
    using orvastore::StoreEnd;
    const QStringList due = dueChecks(database);
    for (const QString& checkId : due) {
        const std::optional<poshost::ClosedCheck> closed = readClosedCheck(database, checkId);
        const orvastore::StoreResult result =
            closed
                ? books.keep(poshost::handedCheckOf(*closed, shop))
                : orvastore::StoreResult{StoreEnd::Done, {}}; // an older backup has no such check
        if (result.end == StoreEnd::Done) {
            forget(database, checkId);
        } else if (result.end == StoreEnd::Refused) {
            postpone(database, checkId, result);
        } else {
            return result;
        }
    }
    return {StoreEnd::Done, {}};
}

silentchecks::Waiting silentchecks::waiting(poshost::Database& database)
{
    poshost::Statement statement(
        database, u"SELECT count(*), count(error), "
                  "(SELECT check_id FROM silent_checks WHERE error IS NOT NULL ORDER BY rowid), "
                  "(SELECT error FROM silent_checks WHERE error IS NOT NULL ORDER BY rowid) "
                  "FROM silent_checks"_s);
    Waiting found;
    if (statement.next()) {
        found.count = statement.value(0).toInt();
        found.refused = statement.value(1).toInt();
        found.refusedCheck = statement.value(2).toString();
        found.why = poshost::Message::fromStored(statement.value(3).toString());
    }
    return found;
}

bool silentchecks::isUnderWay(poshost::Database& database, const QString& checkId)
{
    poshost::Statement statement(
        database, u"SELECT 1 FROM silent_checks WHERE check_id = ? AND error IS NULL"_s);
    return statement.bind(checkId).next();
}

} // namespace till
