// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/postgresbooks.h"

namespace orvastore {

using namespace Qt::StringLiterals;
using poshost::Message;

namespace {

constexpr int rowsOfAPart = 20;

StoreResult refusedWith(const Message& reason)
{
    return {StoreEnd::Refused, reason};
}

LeftCheck leftCheckOf(const QString& shop, const Result& row, int at)
{
    LeftCheck check;
    check.shop = shop;
    check.till = row.text(at, 0);
    check.identifier = row.text(at, 1);
    check.number = row.number(at, 2);
    check.leftAt = row.time(at, 3);
    check.content = row.bytes(at, 4);
    return check;
}

} // namespace

StoreResult PostgresBooks::leave(const LeftCheck& check)
{
    QString ended;
    QString till;
    const StoreResult asked = asking([&](Connection& store) {
        const Result row = store.run("SELECT ended, at_till FROM orva.leave_suspended($1,$2,$3,"
                                     "$4::bigint,$5::bigint,$6::bytea,$7)",
                                     {Value::text(check.shop), Value::text(check.identifier),
                                      Value::text(check.till), Value::number(check.number),
                                      Value::number(check.leftAt.toMSecsSinceEpoch()),
                                      Value::binary(check.content), Value::text(check.mark)});
        ended = row.text(0, 0);
        till = row.text(0, 1);
    });
    if (asked.end != StoreEnd::Done || ended == "left"_L1) {
        return asked;
    }
    return refusedWith(ended == "closed"_L1
                           ? Message::of("store.suspendedClosed", check.identifier, till)
                           : Message::of("store.suspendedElsewhere", check.identifier, till));
}

TakeUp PostgresBooks::takeUp(const QString& shop, const QString& which, const QString& till,
                             const QString& token)
{
    TakeUp taken;
    QString ended;
    taken.result = asking([&](Connection& store) {
        const Result row = store.run(
            "SELECT at_till, with_identifier, with_number, left_millis, with_content, ended "
            "FROM orva.take_up_suspended($1,$2,$3,$4)",
            {Value::text(shop), Value::text(which), Value::text(till), Value::text(token)});
        ended = row.text(0, 5);
        taken.check = leftCheckOf(shop, row, 0);
    });
    if (taken.result.end != StoreEnd::Done || ended == "taken"_L1) {
        return taken;
    }
    taken.result = refusedWith(ended == "none"_L1
                                   ? Message::of("store.suspendedNone", which)
                                   : Message::of("store.suspendedElsewhere", which,
                                                 ended == "settled"_L1 ? till : taken.check->till));
    taken.check.reset();
    taken.isOver = true;
    return taken;
}

StoreResult PostgresBooks::settleTakeUp(const QString& shop, const QString& token)
{
    bool isKnown = false;
    const StoreResult asked = asking([&](Connection& store) {
        isKnown =
            store
                .run("SELECT orva.settle_suspended($1,$2)", {Value::text(shop), Value::text(token)})
                .isTrue(0, 0);
    });
    return asked.end != StoreEnd::Done || isKnown
               ? asked
               : refusedWith(Message::of("store.suspendedReleased"));
}

StoreResult PostgresBooks::forEachLeft(const QString& shop,
                                       const std::function<void(const LeftCheck&)>& take)
{
    return asking([&](Connection& store) {
        Value after = Value::null();
        Value identifier = Value::null();
        while (true) {
            const Result rows = store.run(
                "SELECT till, identifier, number, "
                "floor(extract(epoch FROM left_at) * 1000)::bigint, content, at::text "
                "FROM orva.suspended WHERE shop = $1 AND taken_by IS NULL AND "
                "($2::timestamptz IS NULL OR (at, identifier) > ($2::timestamptz, $3::text)) "
                "ORDER BY at, identifier LIMIT $4::int",
                {Value::text(shop), after, identifier, Value::number(rowsOfAPart)});
            for (int i = 0; i < rows.rows(); ++i) {
                take(leftCheckOf(shop, rows, i));
            }
            if (rows.rows() < rowsOfAPart) {
                return;
            }
            identifier = Value::text(rows.text(rows.rows() - 1, 1));
            after = Value::text(rows.text(rows.rows() - 1, 5));
        }
    });
}

} // namespace orvastore
