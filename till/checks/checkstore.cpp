// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/checkstore.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/queue/outgoingqueue.h"
#include "host/services/currenttime.h"
#include "till/checks/archivedchecks.h"
#include "till/checks/checkcodec.h"
#include "till/checks/checkrow_p.h"
#include "till/failure.h"
#include "till/text.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// Each change of a check gets the next number, and who is last is told by it: clocks are put
/// right.
const QString nextChange = u"(SELECT coalesce(max(change_number), 0) + 1 FROM checks)"_s;

void requireChanged(const Check& check, bool changed)
{
    if (!changed) {
        throw Failure(Text::tr("Check %1 has been closed or abandoned by another till meanwhile; "
                               "abandon it here and open a new one.")
                          .arg(check.id()));
    }
}

} // namespace

int CheckStore::takeNumber()
{
    poshost::Transaction transaction(*database);
    const int number = nextNumber();
    const int following = number == std::numeric_limits<int>::max() ? 1 : number + 1;
    poshost::Statement store(*database,
                             u"INSERT INTO settings (key, value) VALUES ('nextCheckNumber', ?) "
                             "ON CONFLICT (key) DO UPDATE SET value = excluded.value"_s);
    store.bind(following).execute();
    transaction.commit();
    return number;
}

int CheckStore::nextNumber()
{
    constexpr int most = std::numeric_limits<int>::max();
    poshost::Statement known(*database,
                             u"SELECT value FROM settings WHERE key = 'nextCheckNumber'"_s);
    const bool isFirst = !known.next();
    const qint64 kept = isFirst ? 1 : known.value(0).toLongLong();
    return kept >= 1 && kept <= most ? int(kept) : behindLargestNumber();
}

/// The next check number when the one that was kept is damaged.
int CheckStore::behindLargestNumber()
{
    poshost::Statement statement(*database, u"SELECT coalesce(max(number), 0) + 1 FROM checks "
                                            "WHERE number BETWEEN 1 AND ?"_s);
    statement.bind(std::numeric_limits<int>::max() - 1).next();
    return statement.value(0).toInt();
}

void CheckStore::noteOpen(const Check& check)
{
    const QString saleId = check.document->getSaleDocumentId();
    poshost::Statement statement(
        *database, u"INSERT INTO checks (id, number, state, type, sale_id, updated_at, "
                   "change_number) VALUES (?, ?, 'open', ?, ?, ?, %1)"_s.arg(nextChange));
    statement.bind(check.id())
        .bind(check.number())
        .bind(check.document->getDocumentType())
        .bind(saleId.isEmpty() ? QVariant() : QVariant(saleId))
        .bind(CurrentTime::milliseconds())
        .execute();
}

/// @return false: it is neither open nor suspended
bool CheckStore::changeState(const Check& check, const QString& state, const QVariant& data,
                             const QVariant& message)
{
    poshost::Statement statement(
        *database,
        u"UPDATE checks SET state = ?, data = ?, message_id = ?, updated_at = ?, "
        "change_number = %1 WHERE id = ? AND state IN ('open', 'suspended')"_s.arg(nextChange));
    statement.bind(state)
        .bind(data)
        .bind(message)
        .bind(CurrentTime::milliseconds())
        .bind(check.id());
    statement.execute();
    return statement.affectedRows() == 1;
}

void CheckStore::suspend(const Check& check)
{
    requireChanged(check, changeState(check, u"suspended"_s, checkcodec::encode(check), {}));
}

bool CheckStore::abandon(const Check& check)
{
    return changeState(check, u"abandoned"_s, {}, {});
}

void CheckStore::close(const Check& check, const std::function<void()>& confirm)
{
    poshost::Transaction transaction(*database);
    const QString saleId = check.document->getSaleDocumentId();
    if (check.isReturn() && countReturns(saleId) != check.returnsBefore) {
        throw Failure(Text::tr("Another return of this sale has been closed meanwhile; abandon "
                               "this one and open it again."));
    }
    poshost::OutgoingQueue queue(*database);
    const qint64 before = queue.lastAddedId();
    confirm();
    const qint64 after = queue.lastAddedId();
    const std::optional<qint64> saleMessage = messageOf(saleId);
    if (after > before && saleMessage) {
        queue.addDependency(after, *saleMessage);
    }
    if (after > before) {
        queue.putIntoLane(after, laneOf(check));
    }
    requireChanged(check, changeState(check, u"closed"_s, checkcodec::encode(check),
                                      after > before ? QVariant(after) : QVariant()));
    if (notesSilent && after == before) {
        poshost::Statement note(*database, u"INSERT INTO silent_checks (check_id) VALUES (?)"_s);
        note.bind(check.id()).execute();
    }
    transaction.commit();
}

/// The points of one card are moved in the order of its checks. A return is opened with its sale's
/// card; where there is none, a sale and its returns are all there is to keep in order.
QString CheckStore::laneOf(const Check& check)
{
    const QString card = check.cardNumber();
    const QString id = check.isReturn() ? check.document->getSaleDocumentId() : check.id();
    return card.isEmpty() ? u"check "_s + id : u"card "_s + card;
}

void CheckStore::takeIn(const Check& check)
{
    const QString saleId = check.document->getSaleDocumentId();
    poshost::Statement statement(
        *database,
        u"INSERT INTO checks (id, number, state, type, sale_id, data, updated_at, change_number) "
        "VALUES (?, ?, 'suspended', ?, ?, ?, ?, %1) ON CONFLICT (id) DO UPDATE SET "
        "state = excluded.state, data = excluded.data, updated_at = excluded.updated_at, "
        "change_number = excluded.change_number WHERE state = 'abandoned'"_s.arg(nextChange));
    statement.bind(check.id())
        .bind(check.number())
        .bind(check.document->getDocumentType())
        .bind(saleId.isEmpty() ? QVariant() : QVariant(saleId))
        .bind(checkcodec::encode(check))
        .bind(CurrentTime::milliseconds())
        .execute();
}

bool CheckStore::hasSuspended(const QString& which)
{
    const bool last = which == u"last"_s;
    poshost::Statement statement(*database, u"SELECT 1 FROM checks WHERE state = 'suspended'"_s +
                                                (last ? QString() : u" AND id = ?"_s) +
                                                u" LIMIT 1"_s);
    if (!last) {
        statement.bind(which);
    }
    return statement.next();
}

Check CheckStore::loadSuspended(const QString& which)
{
    const bool last = which == u"last"_s;
    const QString condition = last ? QString() : u" AND id = ?"_s;
    poshost::Statement statement(*database, checkrow::select + u"state = 'suspended'"_s +
                                                condition + checkrow::lastFirst + u" LIMIT 1"_s);
    if (!last) {
        statement.bind(which);
    }
    if (!statement.next()) {
        requireKnownStates(last ? QString() : which);
        throw Failure(last ? Text::tr("There is no suspended check.")
                           : Text::tr("There is no suspended check %1; look at the list of checks.")
                                 .arg(which));
    }
    return checkrow::read(statement);
}

/// @param id of the check in question, empty for all
/// @throws Failure when the state of a check is damaged: nobody knows whether it was suspended
void CheckStore::requireKnownStates(const QString& id)
{
    // what stands between the known ones is looked up in the index: "NOT IN" reads every check
    poshost::Statement statement(
        *database,
        id.isEmpty() ? u"SELECT id FROM checks WHERE state < 'abandoned' "
                       "UNION ALL SELECT id FROM checks WHERE state > 'abandoned' AND "
                       "state < 'closed' "
                       "UNION ALL SELECT id FROM checks WHERE state > 'closed' AND state < 'open' "
                       "UNION ALL SELECT id FROM checks WHERE state > 'open' AND "
                       "state < 'suspended' "
                       "UNION ALL SELECT id FROM checks WHERE state > 'suspended' LIMIT 1"_s
                     : u"SELECT id FROM checks WHERE id = ? AND state NOT IN "
                       "('open', 'suspended', 'closed', 'abandoned')"_s);
    if (!id.isEmpty()) {
        statement.bind(id);
    }
    if (statement.next()) {
        throw Failure(checkcodec::damagedText(statement.value(0).toString()));
    }
}

SuspendedChecks CheckStore::suspended()
{
    poshost::Statement statement(*database, u"SELECT count(*), id, min(updated_at) FROM checks "
                                            "WHERE state = 'suspended'"_s);
    if (!statement.next()) {
        return {};
    }
    SuspendedChecks all;
    all.count = statement.value(0).toInt();
    all.oldest = statement.value(1).toString();
    all.since = QDateTime::fromMSecsSinceEpoch(statement.value(2).toLongLong());
    poshost::Statement onTheWay(*database,
                                u"SELECT count(*) + (SELECT count(*) FROM takeups), "
                                "min(begun_at) FROM leavings WHERE content IS NOT NULL"_s);
    if (onTheWay.next()) {
        all.onTheWay = onTheWay.value(0).toInt();
        if (!onTheWay.value(1).isNull()) {
            all.onTheWaySince = QDateTime::fromMSecsSinceEpoch(onTheWay.value(1).toLongLong());
        }
    }
    return all;
}

void CheckStore::forEachClosed(const std::function<void(const Check&)>& take)
{
    // as they stand in the file: an index would have it read in leaps
    poshost::Statement statement(*database,
                                 u"SELECT data, id, number, type, sale_id FROM checks NOT INDEXED "
                                 "WHERE state = 'closed'"_s);
    // both as they are at the first row: what goes into the archive meanwhile comes once
    bool hasRow = statement.next();
    ArchivedChecks(*database).forEachClosed(take);
    for (; hasRow; hasRow = statement.next()) {
        take(checkrow::read(statement));
    }
}

void CheckStore::forEachStored(const std::function<void(const StoredCheck&)>& take)
{
    poshost::Statement statement(
        *database,
        u"SELECT id, state, message_id, data FROM checks WHERE data IS NOT NULL ORDER BY id"_s);
    while (statement.next()) {
        const QVariant message = statement.value(2);
        take({statement.value(0).toString(), statement.value(1).toString(),
              message.isNull() ? std::nullopt : std::optional(message.toLongLong()),
              statement.value(3).toByteArray()});
    }
}

void CheckStore::rewrite(const Check& check)
{
    poshost::Statement statement(*database, u"UPDATE checks SET data = ? WHERE id = ?"_s);
    statement.bind(checkcodec::encode(check)).bind(check.id()).execute();
}

} // namespace till
