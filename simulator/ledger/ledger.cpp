// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/ledger.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr int saleType = static_cast<int>(Check::Type::Sale);

void insertLine(Database& db, const QString& checkId, size_t position, const BookedLine& line)
{
    Statement(db,
              u"INSERT INTO ledger_lines(check_id, position, line_id, sku, quantity, total, "
              "discount, spent, earned, given_back, taken_back) VALUES(?,?,?,?,?,?,?,?,?,?,?)"_s)
        .bind(checkId)
        .bind(static_cast<qint64>(position))
        .bind(line.id)
        .bind(line.sku)
        .bind(line.quantity)
        .bind(line.total)
        .bind(line.discount)
        .bind(line.spent)
        .bind(line.earned)
        .bind(line.givenBack)
        .bind(line.takenBack)
        .execute();
}

} // namespace

Kopecks Ledger::balance(const QString& card, Kopecks opening)
{
    {
        Statement query(db, u"SELECT balance FROM cards WHERE number=?"_s);
        if (query.bind(card).next()) {
            return query.value(0).toLongLong();
        }
    }
    Statement(db, u"INSERT INTO cards(number, opening, balance) VALUES(?,?,?)"_s)
        .bind(card)
        .bind(opening)
        .bind(opening)
        .execute();
    return opening;
}

bool Ledger::isBooked(const QString& checkId) const
{
    return Statement(db, u"SELECT 1 FROM ledger WHERE check_id=?"_s).bind(checkId).next();
}

std::optional<QString> Ledger::cardOfSale(const QString& checkId) const
{
    Statement query(db, u"SELECT card FROM ledger WHERE check_id=? AND type=?"_s);
    if (!query.bind(checkId).bind(saleType).next()) {
        return std::nullopt;
    }
    return query.value(0).toString();
}

std::vector<SoldLine> Ledger::soldLines(const QString& checkId) const
{
    std::vector<SoldLine> lines;
    QHash<int, size_t> byId;
    Statement sold(db, u"SELECT line_id, sku, quantity, total, discount, spent, earned "
                       "FROM ledger_lines WHERE check_id=? ORDER BY position"_s);
    sold.bind(checkId);
    while (sold.next()) {
        SoldLine line;
        line.sold.id = sold.value(0).toInt();
        line.sold.sku = sold.value(1).toString();
        line.sold.quantity = sold.value(2).toLongLong();
        line.sold.total = sold.value(3).toLongLong();
        line.sold.discount = sold.value(4).toLongLong();
        line.sold.spent = sold.value(5).toLongLong();
        line.sold.earned = sold.value(6).toLongLong();
        byId.insert(line.sold.id, lines.size());
        lines.push_back(line);
    }
    Statement returned(db, u"SELECT line_id, sum(l.quantity), sum(l.total), sum(l.given_back), "
                           "sum(l.taken_back) FROM ledger JOIN ledger_lines l USING(check_id) "
                           "WHERE original_id=? GROUP BY line_id"_s);
    returned.bind(checkId);
    while (returned.next()) {
        BookedLine& line = lines.at(byId.value(returned.value(0).toInt())).returned;
        line.quantity = returned.value(1).toLongLong();
        line.total = returned.value(2).toLongLong();
        line.givenBack = returned.value(3).toLongLong();
        line.takenBack = returned.value(4).toLongLong();
    }
    return lines;
}

void Ledger::book(const Booking& booking)
{
    Statement(db, u"INSERT INTO ledger(check_id, type, card, original_id, number, date, total, "
                  "discount, paid, spent, earned, given_back, taken_back) "
                  "VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?)"_s)
        .bind(booking.checkId)
        .bind(static_cast<int>(booking.type))
        .bind(booking.cardNumber)
        .bind(booking.originalId.isEmpty() ? QVariant() : booking.originalId)
        .bind(booking.number)
        .bind(booking.date)
        .bind(booking.total)
        .bind(booking.discount)
        .bind(booking.paid)
        .bind(booking.spent)
        .bind(booking.earned)
        .bind(booking.givenBack)
        .bind(booking.takenBack)
        .execute();
    for (size_t i = 0; i < booking.lines.size(); ++i) {
        insertLine(db, booking.checkId, i, booking.lines[i]);
    }
    Statement(db, u"UPDATE cards SET balance=balance+? WHERE number=?"_s)
        .bind(booking.change())
        .bind(booking.cardNumber)
        .execute();
}

std::vector<Account> Ledger::accounts() const
{
    std::vector<Account> accounts;
    Statement query(
        db, u"SELECT cards.number, opening, sum(earned), sum(spent), sum(given_back), "
            "sum(taken_back), balance FROM cards LEFT JOIN ledger ON ledger.card=cards.number "
            "GROUP BY cards.number ORDER BY cards.number"_s);
    while (query.next()) {
        accounts.push_back({query.value(0).toString(), query.value(1).toLongLong(),
                            query.value(2).toLongLong(), query.value(3).toLongLong(),
                            query.value(4).toLongLong(), query.value(5).toLongLong(),
                            query.value(6).toLongLong()});
    }
    return accounts;
}

std::vector<Booking> Ledger::bookings() const
{
    std::vector<Booking> bookings;
    Statement query(db, u"SELECT check_id, type, card, original_id, number, date, total, "
                        "discount, paid, spent, earned, given_back, taken_back FROM ledger "
                        "ORDER BY sequence"_s);
    while (query.next()) {
        Booking booking;
        booking.checkId = query.value(0).toString();
        booking.type = query.value(1).toInt() == saleType ? Check::Type::Sale : Check::Type::Return;
        booking.cardNumber = query.value(2).toString();
        booking.originalId = query.value(3).toString();
        booking.number = query.value(4).toString();
        booking.date = query.value(5).toString();
        booking.total = query.value(6).toLongLong();
        booking.discount = query.value(7).toLongLong();
        booking.paid = query.value(8).toLongLong();
        booking.spent = query.value(9).toLongLong();
        booking.earned = query.value(10).toLongLong();
        booking.givenBack = query.value(11).toLongLong();
        booking.takenBack = query.value(12).toLongLong();
        bookings.push_back(booking);
    }
    return bookings;
}

} // namespace simulator
