// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/postgresbooks.h"

namespace orvastore {

using namespace Qt::StringLiterals;
using poshost::Message;

namespace {

constexpr int checksOfAPart = 50;

/// As many rows as a person can choose from.
constexpr int mostOfANumber = 20;

constexpr char columns[] =
    "SELECT c.identifier, c.till, c.number, floor(extract(epoch FROM c.closed_at) * 1000)::bigint, "
    "c.sale, orva.is_delivered(c.shop, c.identifier, c.lane), c.content, c.closed_on::text, "
    "c.closed_at::text FROM orva.checks c ";

KeptCheck keptCheckOf(const Result& rows, int at)
{
    KeptCheck check;
    check.identifier = rows.text(at, 0);
    check.till = rows.text(at, 1);
    check.number = rows.number(at, 2);
    check.closedAt = rows.time(at, 3);
    check.saleIdentifier = rows.text(at, 4);
    check.isDelivered = rows.isTrue(at, 5);
    check.content = rows.bytes(at, 6);
    return check;
}

/// The last of a part, behind which the next one begins.
struct Place
{
    QString day;
    QString time;
    QString identifier;
};

Place placeOf(const Result& rows, int at)
{
    return {rows.text(at, 7), rows.text(at, 8), rows.text(at, 0)};
}

/// The part behind a place; the newest where there is none. Days are told apart first, so that no
/// more tables are read than the part needs.
Result partBehind(Connection& store, const QString& shop, const std::optional<Place>& place)
{
    const QByteArray order = "ORDER BY c.closed_on DESC, c.closed_at DESC, c.identifier DESC "
                             "LIMIT " +
                             QByteArray::number(checksOfAPart);
    if (!place) {
        return store.run(columns + QByteArray("WHERE c.shop = $1 ") + order, {Value::text(shop)});
    }
    return store.run(columns +
                         QByteArray("WHERE c.shop = $1 AND c.closed_on <= $2::date AND "
                                    "(c.closed_on, c.closed_at, c.identifier) < "
                                    "($2::date, $3::timestamptz, $4::text) ") +
                         order,
                     {Value::text(shop), Value::text(place->day), Value::text(place->time),
                      Value::text(place->identifier)});
}

} // namespace

StoreResult PostgresBooks::forEachCheck(const QString& shop, const QString& before,
                                        const std::function<bool(const KeptCheck&)>& take)
{
    std::optional<Place> place;
    bool isThere = true;
    if (!before.isEmpty()) {
        const StoreResult found = asking([&](Connection& store) {
            const Result row =
                store.run(columns + QByteArray("WHERE c.shop = $1 AND c.identifier = $2"),
                          {Value::text(shop), Value::text(before)});
            isThere = row.rows() > 0;
            place = isThere ? std::optional(placeOf(row, 0)) : std::nullopt;
        });
        if (found.end != StoreEnd::Done || !isThere) {
            return isThere ? found
                           : StoreResult{StoreEnd::Refused, Message::of("store.checkNone", before)};
        }
    }
    // each part has its own time: nobody knows how long the list is
    while (true) {
        int rows = 0;
        bool wantsMore = true;
        const StoreResult asked = asking([&](Connection& store) {
            const Result part = partBehind(store, shop, place);
            rows = part.rows();
            for (int i = 0; i < rows && wantsMore; ++i) {
                wantsMore = take(keptCheckOf(part, i));
            }
            place = rows == 0 ? place : placeOf(part, rows - 1);
        });
        if (asked.end != StoreEnd::Done || !wantsMore || rows < checksOfAPart) {
            return asked;
        }
    }
}

StoreResult PostgresBooks::findChecks(const QString& shop, const QString& which,
                                      QList<KeptCheck>& found)
{
    found.clear();
    return asking([&](Connection& store) {
        bool isNumber = false;
        const qint64 number = which.toLongLong(&isNumber);
        const Result rows = store.run(
            columns + QByteArray("WHERE c.shop = $1 AND c.identifier = $2 UNION ALL ") + columns +
                QByteArray("WHERE c.shop = $1 AND c.number = $3::bigint AND "
                           "c.identifier <> $2 LIMIT ") +
                QByteArray::number(mostOfANumber),
            {Value::text(shop), Value::text(which),
             isNumber ? Value::number(number) : Value::null()});
        for (int i = 0; i < rows.rows(); ++i) {
            found.append(keptCheckOf(rows, i));
        }
    });
}

StoreResult PostgresBooks::rewrite(const QString& shop, const QString& identifier,
                                   const QByteArray& content)
{
    QString ended;
    const StoreResult asked = asking([&](Connection& store) {
        ended = store
                    .run("SELECT orva.rewrite_check($1,$2,$3::bytea)",
                         {Value::text(shop), Value::text(identifier), Value::binary(content)})
                    .text(0, 0);
    });
    if (asked.end != StoreEnd::Done || ended == "rewritten"_L1) {
        return asked;
    }
    return {StoreEnd::Refused, ended == "waiting"_L1 ? Message::of("store.checkWaits", identifier)
                                                     : Message::of("store.checkNone", identifier)};
}

} // namespace orvastore
