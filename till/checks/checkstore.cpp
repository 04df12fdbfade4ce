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
#include "till/failure.h"
#include "till/text.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// Each change of a check gets the next number, and who is last is told by it: clocks are put
/// right.
const QString nextChange = u"(SELECT coalesce(max(change_number), 0) + 1 FROM checks)"_s;
const QString lastFirst = u" ORDER BY change_number DESC"_s;

/// What readCheck takes a check from.
const QString selectChecks = u"SELECT data, id, number, type, sale_id FROM checks WHERE "_s;

/// The check of a row of selectChecks: what is read from the file is looked at here and nowhere
/// else.
/// @throws Failure when it is damaged, or its columns and its content are not of one check
Check readCheck(const poshost::Statement& row)
{
    const QString id = row.value(1).toString();
    Check check = checkcodec::decode(row.value(0).toByteArray(), id);
    if (check.id() != id || check.number() != row.value(2).toLongLong() ||
        check.document->getDocumentType() != row.value(3).toLongLong() ||
        check.document->getSaleDocumentId() != row.value(4).toString()) {
        throw Failure(checkcodec::damagedText(id));
    }
    return check;
}

void requireChanged(const Check& check, bool changed)
{
    if (!changed) {
        throw Failure(Text::tr("Check %1 has been closed or abandoned by another till meanwhile; "
                               "abandon it here and open a new one.")
                          .arg(check.id()));
    }
}

void requireOnlyOne(bool isOnlyOne, const QString& which, bool onlySales)
{
    if (!isOnlyOne) {
        throw Failure(
            (onlySales
                 ? Text::tr("Several sales have the number %1; name the sale by its identifier.")
                 : Text::tr("Several checks have the number %1; name the check by its identifier."))
                .arg(which),
            ExitCode::Usage);
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
    poshost::Statement statement(*database, selectChecks + u"state = 'suspended'"_s + condition +
                                                lastFirst + u" LIMIT 1"_s);
    if (!last) {
        statement.bind(which);
    }
    if (!statement.next()) {
        requireKnownStates(last ? QString() : which);
        throw Failure(last ? Text::tr("There is no suspended check.")
                           : Text::tr("There is no suspended check %1; look at the list of checks.")
                                 .arg(which));
    }
    return readCheck(statement);
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

Check CheckStore::findSale(const QString& which)
{
    return find(which, true);
}

Check CheckStore::findClosed(const QString& which)
{
    return find(which, false);
}

bool CheckStore::hasClosed(const QString& which)
{
    bool isNumber = false;
    const int number = which.toInt(&isNumber);
    poshost::Statement statement(
        *database,
        u"SELECT 1 FROM checks WHERE +state = 'closed' AND (id = ? OR number = ?) LIMIT 1"_s);
    statement.bind(which).bind(isNumber ? QVariant(number) : QVariant());
    return statement.next() || !ArchivedChecks(*database).named(which, false).isEmpty();
}

Check CheckStore::findSaleToReturn(const QString& which)
{
    if (!terms.fromArchive && !findHere(which, true) && !ArchivedChecks(*database).isEmpty()) {
        throw Failure(Text::tr("There is no closed sale \"%1\" here; an older one is taken back "
                               "with \"return --archive\".")
                          .arg(which),
                      ExitCode::Usage);
    }
    Check sale = find(which, true);
    requireReturnable(sale);
    return sale;
}

std::optional<Check> CheckStore::findOwnSaleToReturn(const QString& which)
{
    const bool isArchived = terms.fromArchive && which != u"last"_s;
    if (!findHere(which, true) &&
        (!isArchived || ArchivedChecks(*database).named(which, true).isEmpty())) {
        return std::nullopt;
    }
    return findSaleToReturn(which);
}

void CheckStore::requireReturnable(const Check& sale) const
{
    const QDateTime sold = sale.document->getDateTime();
    const QDateTime now = MockFactory<CurrentTime>::create()->currentDateTime();
    if (terms.days && !terms.fromArchive && sold.daysTo(now) > *terms.days) {
        throw Failure(Text::tr("The sale was on %1, and goods are taken back for so many days: %2 "
                               "(returnDays of [till]); \"return --archive\" takes them back all "
                               "the same.")
                          .arg(sold.date().toString(Qt::ISODate))
                          .arg(*terms.days),
                      ExitCode::Usage);
    }
}

Check CheckStore::find(const QString& which, bool onlySales)
{
    if (std::optional<Check> here = findHere(which, onlySales)) {
        return *std::move(here);
    }
    const QList<Check> archived =
        which == u"last"_s ? QList<Check>() : ArchivedChecks(*database).named(which, onlySales);
    if (archived.isEmpty()) {
        throw Failure(
            (onlySales ? Text::tr("There is no closed sale \"%1\"; look at the list of checks.")
                       : Text::tr("There is no closed check \"%1\"; look at the list of checks."))
                .arg(which),
            ExitCode::Usage);
    }
    requireOnlyOne(archived.size() == 1, which, onlySales);
    return archived.first();
}

/// In the database.
std::optional<Check> CheckStore::findHere(const QString& which, bool onlySales)
{
    const bool last = which == u"last"_s;
    // the plus keeps the order's index out of it: only a few checks have the number
    QString condition =
        last ? u"state = 'closed'"_s : u"+state = 'closed' AND (id = ? OR number = ?)"_s;
    condition += onlySales ? u" AND type = ?"_s : QString();
    poshost::Statement statement(*database, selectChecks + condition + lastFirst + u" LIMIT 2"_s);
    if (!last) {
        bool isNumber = false;
        const int number = which.toInt(&isNumber);
        statement.bind(which).bind(isNumber ? QVariant(number) : QVariant());
    }
    if (onlySales) {
        statement.bind(static_cast<int>(EDocumentType::Sale));
    }
    if (!statement.next()) {
        return std::nullopt;
    }
    Check found = readCheck(statement);
    requireOnlyOne(last || !statement.next(), which, onlySales);
    return found;
}

QList<Check> CheckStore::returnsOf(const QString& saleId)
{
    QList<Check> returns;
    {
        poshost::Statement statement(*database,
                                     selectChecks + u"sale_id = ? AND state = 'closed'"_s);
        statement.bind(saleId);
        while (statement.next()) {
            returns.append(readCheck(statement));
        }
    }
    if (!isHere(saleId)) { // no return goes into the archive before its sale
        const QList<Check> archived = ArchivedChecks(*database).returnsOf(saleId);
        archivedReturns.insert(saleId, int(archived.size()));
        returns = archived + returns;
    }
    return returns;
}

QString CheckStore::stateOf(const QString& id)
{
    poshost::Statement statement(*database, u"SELECT state FROM checks WHERE id = ?"_s);
    return statement.bind(id).next() ? statement.value(0).toString() : QString();
}

bool CheckStore::isHere(const QString& id)
{
    poshost::Statement statement(*database, u"SELECT 1 FROM checks WHERE id = ?"_s);
    return statement.bind(id).next();
}

/// Those of the archive are not counted anew: no sale waits while files are read. One that has gone
/// there meanwhile is missing in both counts, and the return is opened again.
int CheckStore::countReturns(const QString& saleId)
{
    poshost::Statement statement(
        *database, u"SELECT count(*) FROM checks WHERE sale_id = ? AND state = 'closed'"_s);
    statement.bind(saleId).next();
    return statement.value(0).toInt() + archivedReturns.value(saleId, 0);
}

std::optional<qint64> CheckStore::messageOf(const QString& id)
{
    poshost::Statement statement(*database, u"SELECT message_id FROM checks WHERE id = ?"_s);
    if (!statement.bind(id).next() || statement.value(0).isNull()) {
        return std::nullopt;
    }
    return statement.value(0).toLongLong();
}

bool CheckStore::isDelivered(const QString& id)
{
    // a delivered message is removed after some time, and the check's reference to it with it
    poshost::Statement statement(*database,
                                 u"SELECT 1 FROM checks JOIN queue_messages "
                                 "ON queue_messages.id = checks.message_id "
                                 "WHERE checks.id = ? AND queue_messages.state <> 'delivered'"_s);
    return !statement.bind(id).next();
}

QString CheckStore::cardOfMessage(qint64 messageId)
{
    poshost::Statement statement(*database, selectChecks + u"message_id = ?"_s);
    return statement.bind(messageId).next() ? readCheck(statement).cardNumber() : QString();
}

SuspendedChecks CheckStore::suspended()
{
    poshost::Statement statement(*database, u"SELECT count(*), id, min(updated_at) FROM checks "
                                            "WHERE state = 'suspended'"_s);
    if (!statement.next()) {
        return {};
    }
    return {statement.value(0).toInt(), statement.value(1).toString(),
            QDateTime::fromMSecsSinceEpoch(statement.value(2).toLongLong())};
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
        take(readCheck(statement));
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
