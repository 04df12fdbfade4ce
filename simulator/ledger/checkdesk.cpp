// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/checkdesk.h"

#include "simulator/documents/answerdocument.h"
#include "simulator/documents/checkreader.h"
#include "simulator/documents/rejection.h"
#include "simulator/ledger/returnbooking.h"
#include "simulator/ledger/salebooking.h"
#include "simulator/rules/granting.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// The check of a confirmation must be the one that was pre-checked: same card, same lines.
void requireSameCheck(const Check& check, const Check& known)
{
    if (check.cardNumber != known.cardNumber) {
        throw Rejection(
            424, u"The card %1 is not the pre-checked one"_s.arg(maskedCard(check.cardNumber)));
    }
    if (check.type != known.type || check.originalId != known.originalId) {
        throw Rejection(424, u"The type of the check is not the pre-checked one"_s);
    }
    if (check.lines != known.lines) {
        throw Rejection(424, u"The lines are not those that were pre-checked last"_s);
    }
}

/// What a return's pre-check shows of its booking: the points that will be taken back.
Grant takenBack(const Booking& booking)
{
    Grant grant;
    for (const BookedLine& line : booking.lines) {
        LineGrant lineGrant;
        lineGrant.id = line.id;
        lineGrant.awardBonus = -line.takenBack;
        grant.lines.push_back(lineGrant);
    }
    grant.awardBonus = -booking.takenBack;
    return grant;
}

/// Lets earlier returns have taken what they should have, whatever habits let them book: the next
/// one is held against that.
void makeSound(std::vector<SoldLine>& sold)
{
    for (SoldLine& line : sold) {
        const auto share = [&line](Kopecks booked) {
            return roundedShare(booked, line.returned.quantity, line.sold.quantity);
        };
        if (line.returned.quantity > 0) {
            line.returned.givenBack = share(line.sold.spent);
            line.returned.takenBack = share(line.sold.earned);
        }
    }
}

} // namespace

CheckDesk::CheckDesk(std::shared_ptr<const Rules> deskRules, Database& database, Habits deskHabits)
    : rules(std::move(deskRules)), db(database), habits(std::move(deskHabits)), ledger(database),
      store(database)
{}

Document CheckDesk::precheck(const Check& check, const Element& request)
{
    Transaction transaction(db);
    rejectBooked(check);
    Document answer = check.type == Check::Type::Sale ? precheckSale(check, request)
                                                      : precheckReturn(check, request);
    store.rememberAnswer(check.id, answer.root());
    transaction.commit();
    return answer;
}

void CheckDesk::paymentTry(const Check& check, const Element& request)
{
    Transaction transaction(db);
    if (ledger.isBooked(check.id)) {
        if (store.isSameTry(check.id, request).value_or(false)) {
            return;
        }
        rejectBooked(check);
    }
    static_cast<void>(bookingOf(check, request)); // what it would book is worked out to be checked
    store.rememberTry(check.id, request);
    transaction.commit();
}

void CheckDesk::confirm(const Check& check, const Element& request)
{
    Transaction transaction(db);
    rejectBooked(check);
    const Booking booking = bookingOf(check, request);
    const std::optional<bool> same = store.isSameTry(check.id, request);
    if (!same) {
        throw Rejection(424, u"No payment was tried for this check"_s);
    }
    if (!*same) {
        throw Rejection(424, u"This is not the payment that was tried last for this check"_s);
    }
    ledger.book(booking);
    store.forgetAnswers(check.id);
    transaction.commit();
}

Document CheckDesk::precheckSale(const Check& check, const Element& request)
{
    const Card* card = rules->card(check.cardNumber);
    if (card == nullptr) {
        throw Rejection(424, u"The card %1 is unknown"_s.arg(maskedCard(check.cardNumber)));
    }
    const Kopecks balance = ledger.balance(card->number, card->opening);
    return saleAnswer(request, rules->messages, *card, balance, grantSale(*rules, check, balance));
}

Document CheckDesk::precheckReturn(const Check& check, const Element& request)
{
    const Booking booking = returnBooking(check);
    // a card that the rules no longer know can still return what it bought
    const Card* known = rules->card(check.cardNumber);
    const Card card = known == nullptr ? Card{check.cardNumber, {}, {}, 0} : *known;
    return returnAnswer(request, card, ledger.balance(card.number, card.opening),
                        takenBack(booking));
}

Booking CheckDesk::saleBooking(const Check& check, const Element& answer, const Element& request)
{
    SaleTerms terms{grantedLines(answer), 0};
    Booking booking = bookSale(check, terms.granted, readPayment(request));
    if (!habits.sales.empty()) {
        terms.balance = ledger.balance(check.cardNumber, 0); // of a card that was pre-checked
        for (const SaleHabit change : habits.sales) {
            change(booking, terms);
        }
    }
    return booking;
}

Booking CheckDesk::returnBooking(const Check& check) const
{
    const std::optional<QString> card = ledger.cardOfSale(check.originalId);
    if (!card) {
        throw Rejection(424, u"The returned sale %1 is not known as a confirmed one"_s.arg(
                                 check.originalId.simplified()));
    }
    if (*card != check.cardNumber) {
        throw Rejection(424, u"The card %1 is not the one of the returned sale"_s.arg(
                                 maskedCard(check.cardNumber)));
    }
    std::vector<SoldLine> sold = ledger.soldLines(check.originalId);
    if (!habits.returns.empty()) {
        makeSound(sold);
    }
    Booking booking = bookReturn(check, sold);
    for (const ReturnHabit change : habits.returns) {
        change(booking, sold);
    }
    return booking;
}

/// What the check will book; rejects it unless all agrees with what was pre-checked.
Booking CheckDesk::bookingOf(const Check& check, const Element& request)
{
    const std::optional<Document> answer = store.answerFor(check.id, request);
    if (!answer) {
        throw Rejection(424, u"The check was never pre-checked"_s);
    }
    requireSameCheck(check, readCheck(answer->root()));
    return check.type == Check::Type::Sale ? saleBooking(check, answer->root(), request)
                                           : returnBooking(check);
}

void CheckDesk::rejectBooked(const Check& check) const
{
    if (ledger.isBooked(check.id)) {
        throw Rejection(409, u"The check is confirmed already"_s);
    }
}

} // namespace simulator
