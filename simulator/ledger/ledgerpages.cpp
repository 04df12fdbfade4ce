// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/ledgerpages.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

const QString bookingColumns =
    u"SELECT sequence, check_id, type, card, original_id, number, date, total, discount, paid, "
    "spent, earned, given_back, taken_back FROM ledger "_s;

LedgerPages::Row readRow(const Statement& query)
{
    LedgerPages::Row row;
    row.sequence = query.value(0).toLongLong();
    Booking& booking = row.booking;
    booking.checkId = query.value(1).toString();
    booking.type = static_cast<Check::Type>(query.value(2).toInt());
    booking.cardNumber = query.value(3).toString();
    booking.originalId = query.value(4).toString();
    booking.number = query.value(5).toString();
    booking.date = query.value(6).toString();
    booking.total = query.value(7).toLongLong();
    booking.discount = query.value(8).toLongLong();
    booking.paid = query.value(9).toLongLong();
    booking.spent = query.value(10).toLongLong();
    booking.earned = query.value(11).toLongLong();
    booking.givenBack = query.value(12).toLongLong();
    booking.takenBack = query.value(13).toLongLong();
    return row;
}

} // namespace

std::vector<LedgerPages::Row> LedgerPages::newest(qint64 before, qint64 most) const
{
    std::vector<Row> rows;
    Statement query(db, bookingColumns + u"WHERE sequence<? ORDER BY sequence DESC LIMIT ?"_s);
    query.bind(before).bind(most);
    while (query.next()) {
        rows.push_back(readRow(query));
    }
    return rows;
}

std::optional<Booking> LedgerPages::check(const QString& checkId) const
{
    std::optional<Booking> booking;
    Statement query(db, bookingColumns + u"WHERE check_id=?"_s);
    if (query.bind(checkId).next()) {
        booking = readRow(query).booking;
        booking->lines = linesOf(checkId);
    }
    return booking;
}

std::vector<Booking> LedgerPages::returnsOf(const QString& saleId) const
{
    std::vector<Booking> returns;
    Statement query(db, bookingColumns + u"WHERE original_id=? ORDER BY sequence"_s);
    query.bind(saleId);
    while (query.next()) {
        returns.push_back(readRow(query).booking);
        returns.back().lines = linesOf(returns.back().checkId);
    }
    return returns;
}

std::vector<LedgerPages::Point> LedgerPages::course(const QString& card, Kopecks balance,
                                                    qint64 most) const
{
    std::vector<Point> points;
    Statement query(db, u"SELECT check_id, date, earned-spent+given_back-taken_back FROM ledger "
                        "WHERE card=? ORDER BY sequence DESC LIMIT ?"_s);
    query.bind(card).bind(most);
    while (query.next()) {
        points.push_back({query.value(0).toString(), query.value(1).toString(), balance});
        balance -= query.value(2).toLongLong();
    }
    std::reverse(points.begin(), points.end());
    return points;
}

qint64 LedgerPages::count() const
{
    Statement query(db, u"SELECT count(*) FROM ledger"_s);
    return query.next() ? query.value(0).toLongLong() : 0;
}

QString LedgerPages::wrongCheck() const
{
    Statement query(
        db, u"SELECT check_id FROM ledger JOIN ledger_lines l USING(check_id) GROUP BY sequence "
            "HAVING sum(l.discount)<>ledger.discount OR sum(l.spent)<>ledger.spent OR "
            "sum(l.earned)<>ledger.earned OR sum(l.given_back)<>ledger.given_back OR "
            "sum(l.taken_back)<>ledger.taken_back ORDER BY sequence LIMIT 1"_s);
    return query.next() ? query.value(0).toString() : QString();
}

std::vector<BookedLine> LedgerPages::linesOf(const QString& checkId) const
{
    std::vector<BookedLine> lines;
    Statement query(db, u"SELECT line_id, sku, quantity, total, discount, spent, earned, "
                        "given_back, taken_back FROM ledger_lines WHERE check_id=? "
                        "ORDER BY position"_s);
    query.bind(checkId);
    while (query.next()) {
        lines.push_back({query.value(0).toInt(), query.value(1).toString(),
                         query.value(2).toLongLong(), query.value(3).toLongLong(),
                         query.value(4).toLongLong(), query.value(5).toLongLong(),
                         query.value(6).toLongLong(), query.value(7).toLongLong(),
                         query.value(8).toLongLong()});
    }
    return lines;
}

} // namespace simulator
