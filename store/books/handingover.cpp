// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/books/handingover.h"

#include "host/queue/queuemessage.h"
#include "store/books/returnsbook.h"
#include "store/database/connection.h"
#include "store/database/failuretexts.h"

#include <QCryptographicHash>

namespace orvastore {

using Certainty = StoreError::Certainty;
using poshost::Message;

namespace {

/// The first version of the store's tables that keeps checks without a message.
constexpr qint64 silentFrom = 8;

constexpr char asNew[] =
    "SELECT orva.hand_over_new($1,$2,$3,$4::bigint,$5::bigint,$6::bytea,$7,$8::bytea,"
    "$9,$10,$11,$12,$13::bytea,$14,$15::int,$16::int,$17::int,$18::int)";
constexpr char withOneMessage[] =
    "SELECT orva.hand_over($1,$2,$3,$4::bigint,$5::bigint,$6::bytea,$7,$8::bytea,"
    "$9,$10,$11,$12,$13::bytea,$14,$15::int,$16::int,$17::int,$18::int)";
constexpr char checkAlone[] =
    "SELECT orva.hand_over_check($1,$2,$3,$4::bigint,$5::bigint,$6::bytea,"
    "$7,$8::bytea)";
constexpr char withoutMessage[] =
    "SELECT orva.hand_over_silent($1,$2,$3,$4::bigint,$5::bigint,$6,$7::bytea)";
constexpr char oneMore[] = "SELECT orva.hand_over_more($1,$2,$3,$4,$5,$6,$7,$8::bytea,$9,$10::int,"
                           "$11::int,$12::int,$13::int)";

/// The card's number stays at the till.
Value laneOf(const HandedCheck& check)
{
    return check.laneName.isEmpty() ? Value::null()
                                    : Value::binary(QCryptographicHash::hash(
                                          check.laneName.toUtf8(), QCryptographicHash::Sha256));
}

QList<Value> valuesOf(const HandedCheck& check)
{
    return {Value::text(check.shop),
            Value::text(check.identifier),
            Value::text(check.till),
            Value::number(check.number),
            Value::number(check.closedAt.toMSecsSinceEpoch()),
            laneOf(check),
            Value::text(check.saleIdentifier),
            Value::binary(check.content)};
}

QList<Value> valuesOf(const HandedMessage& message)
{
    const auto steps = poshost::QueueMessage::addressesOf(message.urls).size();
    return {Value::text(message.queue),
            Value::text(message.extra),
            Value::text(QString::fromUtf8(message.headers)),
            Value::text(QString::fromUtf8(message.urls)),
            Value::binary(message.payload),
            Value::text(message.authorization),
            Value::number(steps),
            Value::number(message.stepsDone),
            Value::number(message.attempts),
            Value::number(message.stepAttempts)};
}

QList<Value> valuesOfAll(const HandedCheck& check)
{
    return valuesOf(check) + valuesOf(check.messages.first());
}

/// A store from before it kept such checks takes none: they wait until it is brought up to date.
void handOverSilent(Connection& connection, const HandedCheck& check)
{
    QList<Value> values = valuesOf(check);
    values.removeAt(5); // the lane: there is nothing to deliver
    try {
        connection.run(withoutMessage, values);
    } catch (const StoreError& error) {
        if (error.state() == failuretexts::noFunction) {
            throw StoreError(Certainty::NothingSent,
                             Message::of("store.olderSchema", silentFrom - 1, silentFrom));
        }
        throw;
    }
}

/// Nearly every check is new, and to look whether it is there costs as much as to keep it: it is
/// kept as a new one, and only when its key is taken, or the store is older, as one that may be
/// there.
void handOverAlone(Connection& connection, const HandedCheck& check)
{
    const QList<Value> values = valuesOfAll(check);
    bool isThere = false;
    try {
        connection.run(asNew, values);
        return;
    } catch (const StoreError& error) {
        isThere = error.state() == failuretexts::keyIsTaken;
        if (!isThere && error.state() != failuretexts::noFunction) {
            throw;
        }
    }
    try {
        connection.run(withOneMessage, values);
    } catch (const StoreError& error) {
        if (isThere) { // whatever became of the repetition, and perhaps here alone
            throw StoreError(Certainty::Unknown, error.message());
        }
        throw;
    }
}

void handOverMessages(Connection& connection, const HandedCheck& check)
{
    const bool isNew = !connection.run(checkAlone, valuesOf(check)).isNull(0, 0);
    for (const HandedMessage& message : check.messages) {
        if (isNew) {
            connection.run(oneMore,
                           QList<Value>{Value::text(check.shop), Value::text(check.identifier),
                                        Value::text(check.saleIdentifier)} +
                               valuesOf(message));
        }
    }
}

/// Several messages, and what a return takes back, go in a transaction of several commands. Until
/// the last of them nothing can have happened.
void handOverSeveral(Connection& connection, const HandedCheck& check)
{
    try {
        connection.runAll("BEGIN");
        if (!check.returned.isEmpty()) {
            returnsbook::settle(connection, check);
        }
        if (check.messages.size() > 1) {
            handOverMessages(connection, check);
        } else if (check.messages.isEmpty()) {
            handOverSilent(connection, check);
        } else {
            connection.run(withOneMessage, valuesOfAll(check));
        }
    } catch (const StoreError& error) {
        connection.close();
        if (error.isConflict()) {
            throw;
        }
        const bool refused = error.certainty() == Certainty::Refused;
        throw StoreError(refused ? Certainty::Refused : Certainty::NothingSent, error.message(),
                         error.state());
    }
    connection.runAll("COMMIT");
}

} // namespace

void noteTill(Connection& connection, const QString& shop, const QString& till)
{
    connection.run("SELECT orva.note_till($1, $2)", {Value::text(shop), Value::text(till)});
}

void handOver(Connection& connection, const HandedCheck& check)
{
    if (check.messages.size() > 1 || !check.returned.isEmpty()) {
        handOverSeveral(connection, check);
    } else if (check.messages.isEmpty()) {
        handOverSilent(connection, check);
    } else {
        handOverAlone(connection, check);
    }
}

} // namespace orvastore
