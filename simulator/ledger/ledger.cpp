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
    db.run(u"INSERT INTO ledger_lines(check_id, position, line_id, sku, quantity, total, discount, "
           "spent, earned, given_back, taken_back) VALUES(?,?,?,?,?,?,?,?,?,?,?)"_s,
           {checkId, static_cast<qint64>(position), line.id, line.sku.isNull() ? u""_s : line.sku,
            line.quantity, line.total, line.discount, line.spent, line.earned, line.givenBack,
            line.takenBack});
}

} // namespace

Kopecks Ledger::balance(const QString& card, Kopecks opening)
{
    {
        QSqlQuery query = db.run(u"SELECT balance FROM cards WHERE number=?"_s, {card});
        if (query.next()) {
            return query.value(0).toLongLong();
        }
    }
    db.run(u"INSERT INTO cards(number, opening, balance) VALUES(?,?,?)"_s,
           {card, opening, opening});
    return opening;
}

bool Ledger::isBooked(const QString& checkId) const
{
    return db.run(u"SELECT 1 FROM ledger WHERE check_id=?"_s, {checkId}).next();
}

std::optional<QString> Ledger::cardOfSale(const QString& checkId) const
{
    QSqlQuery query =
        db.run(u"SELECT card FROM ledger WHERE check_id=? AND type=?"_s, {checkId, saleType});
    if (!query.next()) {
        return std::nullopt;
    }
    return query.value(0).toString();
}

std::vector<SoldLine> Ledger::soldLines(const QString& checkId) const
{
    std::vector<SoldLine> lines;
    QHash<int, size_t> byId;
    QSqlQuery sold = db.run(u"SELECT line_id, sku, quantity, total, discount, spent, earned "
                            "FROM ledger_lines WHERE check_id=? ORDER BY position"_s,
                            {checkId});
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
    QSqlQuery returned =
        db.run(u"SELECT line_id, sum(l.quantity), sum(l.total), sum(l.given_back), "
               "sum(l.taken_back) FROM ledger JOIN ledger_lines l USING(check_id) "
               "WHERE original_id=? GROUP BY line_id"_s,
               {checkId});
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
    const auto text = [](const QString& value) { return value.isNull() ? u""_s : value; };
    db.run(u"INSERT INTO ledger(check_id, type, card, original_id, number, date, total, discount, "
           "paid, spent, earned, given_back, taken_back) VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?)"_s,
           {booking.checkId, static_cast<int>(booking.type), booking.cardNumber,
            booking.originalId.isEmpty() ? QVariant() : booking.originalId, text(booking.number),
            text(booking.date), booking.total, booking.discount, booking.paid, booking.spent,
            booking.earned, booking.givenBack, booking.takenBack});
    for (size_t i = 0; i < booking.lines.size(); ++i) {
        insertLine(db, booking.checkId, i, booking.lines[i]);
    }
    db.run(u"UPDATE cards SET balance=balance+? WHERE number=?"_s,
           {booking.change(), booking.cardNumber});
}

std::vector<Account> Ledger::accounts() const
{
    std::vector<Account> accounts;
    QSqlQuery query =
        db.run(u"SELECT cards.number, opening, sum(earned), sum(spent), sum(given_back), "
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
    QSqlQuery query = db.run(u"SELECT check_id, type, card, original_id, number, date, total, "
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
