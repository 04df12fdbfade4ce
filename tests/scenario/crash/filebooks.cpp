// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/filebooks.h"

#include "host/database/statement.h"
#include "host/database/transaction.h"

using namespace Qt::StringLiterals;
using orvastore::KeptCheck;
using orvastore::SaleToReturn;
using orvastore::StoreEnd;
using orvastore::StoreResult;

void FileBooks::makeTable(poshost::Database& database)
{
    database.execute(u"CREATE TABLE IF NOT EXISTS taken_back (identifier TEXT PRIMARY KEY, "
                     "sale TEXT, till TEXT, number INTEGER, state TEXT, content BLOB)"_s);
    database.execute(u"CREATE TABLE IF NOT EXISTS silent (identifier TEXT PRIMARY KEY)"_s);
}

void FileBooks::settle(poshost::Database& database, const orvastore::HandedCheck& check)
{
    if (check.returned.isEmpty()) {
        return;
    }
    poshost::Statement statement(database, u"INSERT OR REPLACE INTO taken_back "
                                           "VALUES (?, ?, ?, ?, 'closed', ?)"_s);
    statement.bind(check.identifier)
        .bind(check.saleIdentifier)
        .bind(check.till)
        .bind(check.number)
        .bind(check.content)
        .execute();
}

StoreResult FileBooks::refusal()
{
    return {StoreEnd::Refused, poshost::Message::plain(u"not in this store"_s)};
}

bool FileBooks::reach()
{
    const QStringList words = settings.database.split(u' ');
    if (words.contains(u"away"_s)) {
        return false;
    }
    isUnanswered = words.contains(u"unanswered"_s);
    if (!database) {
        for (const QString& word : words) {
            if (word.startsWith("file="_L1)) {
                database = QSharedPointer<poshost::Database>::create(word.section(u'=', 1));
            }
        }
        makeTable(*database);
    }
    return true;
}

SaleToReturn FileBooks::saleToReturn(const QString&, const QString& which)
{
    SaleToReturn found;
    if (!reach()) {
        return found;
    }
    poshost::Statement statement(*database, u"SELECT identifier, till, number, content "
                                            "FROM taken_back WHERE sale = ? "
                                            "AND state <> 'released' ORDER BY rowid"_s);
    statement.bind(which);
    while (statement.next()) {
        KeptCheck kept;
        kept.identifier = statement.value(0).toString();
        kept.till = statement.value(1).toString();
        kept.number = statement.value(2).toLongLong();
        kept.saleIdentifier = which;
        kept.content = statement.value(3).toByteArray();
        found.returns.append(kept);
    }
    found.result.end = StoreEnd::Done;
    return found;
}

QString FileBooks::stateOf(const QString& identifier)
{
    poshost::Statement statement(*database, u"SELECT state FROM taken_back WHERE identifier = ?"_s);
    return statement.bind(identifier).next() ? statement.value(0).toString() : QString();
}

StoreResult FileBooks::reserve(const orvastore::Reservation& reservation)
{
    if (!reach()) {
        return {};
    }
    poshost::Transaction transaction(*database);
    const QString state = stateOf(reservation.identifier);
    if (state == "released"_L1) {
        return {StoreEnd::Refused, poshost::Message::plain(u"it was given back"_s), true};
    }
    const StoreResult result =
        state.isEmpty() ? reserveHere(reservation) : StoreResult{StoreEnd::Done, {}};
    transaction.commit();
    const bool isLost = isUnanswered && state.isEmpty() && result.end == StoreEnd::Done;
    return isLost ? StoreResult{StoreEnd::Unknown, {}} : result;
}

StoreResult FileBooks::reserveHere(const orvastore::Reservation& reservation)
{
    for (const KeptCheck& other : saleToReturn({}, reservation.saleIdentifier).returns) {
        if (!reservation.known.contains(other.identifier)) {
            return {StoreEnd::Refused, poshost::Message::plain(other.identifier), true};
        }
    }
    poshost::Statement statement(*database, u"INSERT INTO taken_back "
                                            "VALUES (?, ?, ?, ?, 'reserved', ?)"_s);
    statement.bind(reservation.identifier)
        .bind(reservation.saleIdentifier)
        .bind(reservation.till)
        .bind(reservation.number)
        .bind(reservation.content)
        .execute();
    return {StoreEnd::Done, {}};
}

StoreResult FileBooks::release(const QString&, const QString& identifier)
{
    if (!reach()) {
        return {};
    }
    poshost::Statement statement(
        *database, u"INSERT INTO taken_back (identifier, state) VALUES (?, 'released') "
                   "ON CONFLICT (identifier) DO UPDATE SET state = "
                   "CASE state WHEN 'closed' THEN state ELSE 'released' END"_s);
    statement.bind(identifier).execute();
    return {StoreEnd::Done, {}};
}

StoreResult FileBooks::settleReturn(const QString&, const QString& identifier)
{
    if (!reach()) {
        return {};
    }
    poshost::Statement statement(*database, u"UPDATE taken_back SET state = 'closed' "
                                            "WHERE identifier = ? AND state = 'reserved'"_s);
    statement.bind(identifier).execute();
    return {StoreEnd::Done, {}};
}

StoreResult FileBooks::keep(const orvastore::HandedCheck& check)
{
    if (!reach()) {
        return {};
    }
    poshost::Transaction transaction(*database);
    poshost::Statement statement(*database, u"INSERT OR IGNORE INTO silent VALUES (?)"_s);
    statement.bind(check.identifier).execute();
    const bool isNew = statement.affectedRows() == 1;
    settle(*database, check);
    transaction.commit();
    return {isUnanswered && isNew ? StoreEnd::Unknown : StoreEnd::Done, {}};
}
