// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The same document again: late, at once, in another order, under another content.

#include "till/checks/amount.h"
#include "till/text.h"
#include "till/verify/bench.h"
#include "till/verify/cases.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

namespace names = protocol::names;

constexpr int atOnce = 8;

/// A check with another number of the till: the same to every computation, and yet another
/// document.
QByteArray otherContent(const QByteArray& confirmation)
{
    return Draft(confirmation).set({names::number}, u"999999"_s).bytes();
}

/// Tried already. @throws NotTried
Papers tried(Bench& bench)
{
    const Papers papers = bench.sold(bench.basket());
    bench.mayBeBooked(papers);
    if (bench.pay(papers.confirmation).status != 200) {
        Bench::cannot(Text::tr("the server takes no payment try"));
    }
    return papers;
}

void isBookedOnce(Bench& bench, qint64 before, const Papers& papers)
{
    bench.expectBalance(bench.card(), before, Booking::of(papers.confirmation).change());
}

void confirmedTwice(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers papers = bench.booked(bench.basket());
    static_cast<void>(bench.confirm(papers.confirmation));
    isBookedOnce(bench, before, papers);
}

void allAgain(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers papers = bench.booked(bench.basket());
    static_cast<void>(bench.pay(papers.confirmation));
    static_cast<void>(bench.confirm(papers.confirmation));
    isBookedOnce(bench, before, papers);
}

void confirmedByMany(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers papers = tried(bench);
    const QList<Outgoing> same(atOnce, bench.outgoing(bench.ways().confirm, papers.confirmation));
    static_cast<void>(bench.sendTogether(same));
    isBookedOnce(bench, before, papers);
}

void triedByMany(Bench& bench)
{
    const Papers papers = bench.sold(bench.basket());
    const QList<Outgoing> same(atOnce,
                               bench.outgoing(bench.ways().paymentTry, papers.confirmation));
    for (const Reply& reply : bench.sendTogether(same)) {
        bench.lookAt({bench.ways().paymentTry, papers.confirmation, reply});
        bench.expectStatus(reply, {200});
    }
}

/// Waits until what was sent without an answer has been worked on: the server takes a further
/// request of the same check.
void lostReply(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers papers = tried(bench);
    bench.wire().sendAndLeave(bench.outgoing(bench.ways().confirm, papers.confirmation));
    static_cast<void>(bench.confirm(papers.confirmation));
    isBookedOnce(bench, before, papers);
}

void lostReplyOfTry(Bench& bench)
{
    const Papers papers = bench.sold(bench.basket());
    bench.wire().sendAndLeave(bench.outgoing(bench.ways().paymentTry, papers.confirmation));
    bench.expectStatus(bench.pay(papers.confirmation), {200});
}

void replacedTry(Bench& bench)
{
    const Papers papers = tried(bench);
    const QByteArray other = otherContent(papers.confirmation);
    // the number is carried back, so a server may hold it against its answer
    if (bench.pay(other).status == 424) {
        Bench::cannot(Text::tr("the server holds the check's number against its answer"));
    }
    bench.expectStatus(bench.pay(papers.confirmation), {200});
    bench.expectStatus(bench.confirm(papers.confirmation), {200});
}

void replacedByOtherPoints(Bench& bench)
{
    const Papers papers = bench.soldWithPoints(bench.basket(PointsChoice::sum(500)));
    Draft without(papers.confirmation);
    const qint64 before = bench.balance(bench.card());
    qint64 spent = 0;
    for (int line = 0; line < without.lineCount(); ++line) {
        const Names used{names::usedAwards, names::rawItemUsedAwards, names::usedBonusInCurrency};
        spent += without.kopecksInLine(line, used);
        without.removeFromLine(line, used);
    }
    const Names paid{names::payments, names::rawCheckPayment, names::amount};
    const qint64 amount = readAmount(without.text(paid)).value_or(0) + spent;
    without.set(paid, amount::moneyText(amount));
    bench.mayBeBooked(papers);
    bench.expectStatus(bench.pay(without.bytes()), {200});
    bench.expectStatus(bench.pay(papers.confirmation), {200});
    bench.expectStatus(bench.confirm(papers.confirmation), {200});
    isBookedOnce(bench, before, papers);
}

void otherThanTried(Bench& bench)
{
    const Papers papers = tried(bench);
    bench.expectRefusal(bench.confirm(otherContent(papers.confirmation)), 424);
}

void againWhenBooked(Bench& bench, Reply (Bench::*step)(const QByteArray&),
                     QByteArray (*document)(const Papers&), int wanted)
{
    const qint64 before = bench.balance(bench.card());
    const Papers papers = bench.booked(bench.basket());
    bench.expectStatus((bench.*step)(document(papers)), {wanted});
    isBookedOnce(bench, before, papers);
}

QByteArray confirmationOf(const Papers& papers)
{
    return papers.confirmation;
}

QByteArray otherConfirmationOf(const Papers& papers)
{
    return otherContent(papers.confirmation);
}

QByteArray requestOf(const Papers& papers)
{
    return papers.precheck.request;
}

QByteArray otherRequestOf(const Papers& papers)
{
    Draft draft(papers.precheck.request);
    return draft.makeLines(draft.lineCount() + 2).bytes();
}

const Case rows[] = {
    {"precheck-repeatable.when-tried", "precheck-repeatable",
     [](Bench& bench) {
         bench.expectStatus(bench.precheck(tried(bench).precheck.request), {200});
     }},
    {"book-once.confirmed-twice", "book-once", confirmedTwice},
    {"book-once.all-again", "book-once", allAgain},
    {"book-once.confirmed-by-many-at-once", "book-once", confirmedByMany},
    {"book-once.lost-reply", "book-once", lostReply},
    {"try-repeated.twice", "try-repeated",
     [](Bench& bench) { bench.expectStatus(bench.pay(tried(bench).confirmation), {200}); }},
    {"try-repeated.by-many-at-once", "try-repeated", triedByMany},
    {"try-repeated.lost-reply", "try-repeated", lostReplyOfTry},
    {"try-repeated.when-booked", "try-repeated",
     [](Bench& bench) { againWhenBooked(bench, &Bench::pay, confirmationOf, 200); }},
    {"try-replaceable.and-back", "try-replaceable", replacedTry},
    {"try-replaceable.other-points", "try-replaceable", replacedByOtherPoints},
    {"confirm-equals-try.other-content", "confirm-equals-try", otherThanTried},
    {"known-check-409.confirmation", "known-check-409",
     [](Bench& bench) { againWhenBooked(bench, &Bench::confirm, confirmationOf, 409); }},
    {"known-check-409.precheck", "known-check-409",
     [](Bench& bench) { againWhenBooked(bench, &Bench::precheck, requestOf, 409); }},
    {"known-check-409.other-precheck", "known-check-409",
     [](Bench& bench) { againWhenBooked(bench, &Bench::precheck, otherRequestOf, 409); }},
    {"known-check-409.other-payment-try", "known-check-409",
     [](Bench& bench) { againWhenBooked(bench, &Bench::pay, otherConfirmationOf, 409); }},
    {"known-check-409.other-confirmation", "known-check-409",
     [](Bench& bench) { againWhenBooked(bench, &Bench::confirm, otherConfirmationOf, 409); }},
};

} // namespace

std::span<const Case> repeatCases()
{
    return rows;
}

} // namespace till::verify
