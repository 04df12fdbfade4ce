// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/books/returnsbook.h"

#include "store/database/connection.h"

namespace orvastore {

using namespace Qt::StringLiterals;
using poshost::Message;

namespace {

/// An array as PostgreSQL writes it.
template <typename List, typename Write>
Value arrayOf(const List& list, const Write& write)
{
    QStringList written;
    for (const auto& element : list) {
        written.append(write(element));
    }
    return Value::text(u'{' + written.join(u',') + u'}');
}

QString quoted(QString text)
{
    return u'"' + text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s) + u'"';
}

QList<Value> valuesOf(const QList<ReturnedLine>& lines)
{
    return {
        arrayOf(lines, [](const ReturnedLine& line) { return QString::number(line.position); }),
        arrayOf(lines, [](const ReturnedLine& line) { return QString::number(line.thousandths); }),
        arrayOf(lines,
                [](const ReturnedLine& line) { return QString::number(line.soldThousandths); })};
}

Message tooMuch(const Result& found, int firstColumn, const QString& identifier)
{
    return Message::of("store.returnTooMuch", found.text(0, firstColumn),
                       found.text(0, firstColumn + 1), found.number(0, firstColumn + 2),
                       identifier);
}

} // namespace

SaleToReturn returnsbook::find(Connection& connection, const QString& shop, const QString& which)
{
    SaleToReturn found;
    const Result sales = connection.run("SELECT * FROM orva.sales_named($1, $2)",
                                        {Value::text(shop), Value::text(which)});
    for (int row = 0; row < sales.rows(); ++row) {
        found.sales.append({sales.text(row, 0), sales.text(row, 1), sales.number(row, 2),
                            sales.time(row, 3), QString(), sales.isTrue(row, 4),
                            sales.bytes(row, 5)});
    }
    if (found.sales.size() > 1) {
        return found;
    }
    const QString sale = found.sales.isEmpty() ? which : found.sales.first().identifier;
    const Result returns = connection.run("SELECT * FROM orva.returns_known($1, $2)",
                                          {Value::text(shop), Value::text(sale)});
    for (int row = 0; row < returns.rows(); ++row) {
        found.returns.append({returns.text(row, 0), returns.text(row, 1), returns.number(row, 2),
                              returns.time(row, 3), sale, false, returns.bytes(row, 4)});
    }
    return found;
}

void returnsbook::reserve(Connection& connection, const Reservation& reservation)
{
    const QList<Value> values =
        QList<Value>{Value::text(reservation.shop), Value::text(reservation.till),
                     Value::text(reservation.identifier), Value::number(reservation.number),
                     Value::text(reservation.saleIdentifier)} +
        valuesOf(reservation.lines) +
        QList<Value>{arrayOf(reservation.known, quoted), Value::binary(reservation.content)};
    const Result found = connection.run("SELECT outcome, other, other_till, other_number "
                                        "FROM orva.reserve_return($1, $2, $3, $4::bigint, $5, "
                                        "$6::int[], $7::bigint[], $8::bigint[], $9::text[], "
                                        "$10::bytea)",
                                        values);
    const QString outcome = found.text(0, 0);
    if (outcome == "unknown"_L1) {
        // the amounts of this one are right if that one closes, and wrong if it is given up
        const bool isUndecided = reservation.known.contains(found.text(0, 1));
        throw StoreError::conflict(isUndecided
                                       ? Message::of(undecidedReturn, found.text(0, 1),
                                                     found.text(0, 2), found.number(0, 3))
                                       : Message::of("store.returnUnknown", found.text(0, 1),
                                                     found.text(0, 2), found.number(0, 3)));
    }
    if (outcome == "too much"_L1) {
        throw StoreError::conflict(tooMuch(found, 1, reservation.identifier));
    }
    if (outcome != "kept"_L1) {
        throw StoreError::conflict(Message::of("store.returnReleased"));
    }
}

void returnsbook::release(Connection& connection, const QString& shop, const QString& identifier)
{
    connection.run("SELECT orva.release_return($1, $2)",
                   {Value::text(shop), Value::text(identifier)});
}

void returnsbook::close(Connection& connection, const QString& shop, const QString& identifier)
{
    connection.run("SELECT orva.close_return($1, $2)",
                   {Value::text(shop), Value::text(identifier)});
}

void returnsbook::settle(Connection& connection, const HandedCheck& check)
{
    const QList<Value> values =
        QList<Value>{Value::text(check.shop), Value::text(check.till),
                     Value::text(check.identifier), Value::number(check.number),
                     Value::text(check.saleIdentifier)} +
        valuesOf(check.returned) + QList<Value>{Value::binary(check.content)};
    const Result found = connection.run("SELECT other, other_till, other_number "
                                        "FROM orva.settle_return($1, $2, $3, $4::bigint, $5, "
                                        "$6::int[], $7::bigint[], $8::bigint[], $9::bytea)",
                                        values);
    if (!found.isNull(0, 0)) {
        throw StoreError::conflict(tooMuch(found, 0, check.identifier));
    }
}

} // namespace orvastore
