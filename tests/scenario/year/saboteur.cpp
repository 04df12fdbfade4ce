// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/saboteur.h"

#include "simulator/ledger/ledger.h"

using namespace Qt::StringLiterals;

namespace year {

simulator::Answer Saboteur::handle(const simulator::Request& request,
                                   const simulator::FaultyService::Handler& honest)
{
    if (plant == Plant::None || !request.path.endsWith("/checkconfirm")) {
        return honest(request);
    }
    const bool now = ++confirmations == at;
    if (now && plant == Plant::DropOne) {
        return {};
    }
    if (now && plant == Plant::RefuseOne) {
        refused = request.body;
    }
    if (!refused.isEmpty() && request.body == refused) {
        return simulator::refusal(424, u"planted"_s);
    }
    const simulator::Answer answer = honest(request);
    if (now && plant == Plant::BookTwice) {
        bookTwin(answer.checkId);
    } else if (now && plant == Plant::DropPoint) {
        takeKopeck(answer.cardNumber);
    }
    return answer;
}

void Saboteur::bookTwin(const QString& checkId) const
{
    simulator::Database books(database, simulator::Database::Open::ExistingOnly);
    poshost::Transaction transaction(books);
    simulator::Ledger ledger(books);
    for (simulator::Booking booking : ledger.bookings()) {
        if (booking.checkId == checkId) {
            booking.checkId = u"twin"_s;
            ledger.book(booking);
        }
    }
    transaction.commit();
}

void Saboteur::takeKopeck(const QString& card) const
{
    simulator::Database books(database, simulator::Database::Open::ExistingOnly);
    poshost::Statement(books, u"UPDATE cards SET balance = balance - 1 WHERE number = ?"_s)
        .bind(card)
        .execute();
}

} // namespace year
