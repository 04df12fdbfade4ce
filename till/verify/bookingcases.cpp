// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a sale books, to the kopeck.

#include "till/text.h"
#include "till/verify/answerform.h"
#include "till/verify/bench.h"
#include "till/verify/cases.h"

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

namespace names = protocol::names;

/// Sends a sale and compares what the card holds then. Where it does not agree, the two parts of
/// the change are told apart by what a server that counts otherwise would have booked.
void booksAsConfirmed(Bench& bench, const Papers& papers)
{
    const qint64 before = bench.balance(bench.card());
    bench.mayBeBooked(papers);
    bench.expectStatus(bench.pay(papers.confirmation), {200});
    const Reply reply = bench.confirm(papers.confirmation);
    bench.expectStatus(reply, {200});
    const Exchange about{bench.ways().confirm, papers.confirmation, reply};
    const Booking booking = Booking::of(papers.confirmation);
    try {
        bench.expectBalance(bench.card(), before, booking.change());
    } catch (Broken& broken) {
        const Reading answer(papers.precheck.reply.body);
        const Names awards{names::awards, names::rawCheckAwards};
        const qint64 allowed = answer.amount(awards + Names{names::allowBonus}).value_or(0);
        const qint64 award = answer.amount(awards + Names{names::awardBonus}).value_or(0);
        const qint64 change = bench.balance(bench.card()) - before;
        const bool spentAllowed =
            allowed != booking.spent && change >= -allowed && change <= award - allowed;
        const bool spentNothing = change == booking.earned || change == award;
        const bool spentOtherwise = booking.spent > 0 && (spentAllowed || spentNothing);
        broken.complaint.exchange = about;
        broken.complaint.requirement =
            spentOtherwise ? u"points-as-confirmed"_s : u"accrual-scaled"_s;
        throw;
    }
}

PointsChoice some(qint64 kopecks)
{
    return PointsChoice::sum(kopecks);
}

/// Lines whose awards, each shrunk by itself, differ from the sum shrunk at once.
Basket manyRoundings(const Bench& bench, const PointsChoice& points)
{
    Basket basket = bench.basket(points);
    for (int position = 4; position <= 9; ++position) {
        Line line = basket.lines.first();
        line.position = position;
        line.priceKopecks = 3330 + position * 111;
        line.thousandths = 1000;
        line.sumKopecks = line.priceKopecks;
        basket.lines.append(line);
    }
    return basket;
}

/// A check large enough that the whole balance may be spent on it.
Basket dearBasket(const Bench& bench, qint64 balance)
{
    return bench.pieces(1, std::max<qint64>(100'000, balance * 4), PointsChoice::all());
}

void wholeBalance(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    booksAsConfirmed(bench, bench.soldWithPoints(dearBasket(bench, before)));
}

/// Both were told of the same points, and both have taken money for the rest.
void twoTillsAtOnce(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers first = bench.soldWithPoints(dearBasket(bench, before));
    const Papers second = bench.soldWithPoints(dearBasket(bench, before));
    bench.mayBeBooked(first);
    bench.mayBeBooked(second);
    for (const Papers& papers : {first, second}) {
        bench.expectStatus(bench.pay(papers.confirmation), {200});
    }
    const QList<Reply> replies =
        bench.sendTogether({bench.outgoing(bench.ways().confirm, first.confirmation),
                            bench.outgoing(bench.ways().confirm, second.confirmation)});
    for (const Reply& reply : replies) {
        bench.lookAt({bench.ways().confirm, second.confirmation, reply});
        bench.expectStatus(reply, {200});
    }
    bench.expectBalance(bench.card(), before,
                        Booking::of(first.confirmation).change() +
                            Booking::of(second.confirmation).change());
}

void otherCardStays(Bench& bench)
{
    const qint64 other = bench.balance(bench.secondCard());
    static_cast<void>(bench.booked(bench.basket()));
    bench.expectBalance(bench.secondCard(), other, 0);
}

/// As a shop does it: the host's own queue brings the check to the server.
void deliveredByTheHost(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers papers = bench.sold(bench.basket());
    const bool isTaken = bench.counter().deliver(papers);
    for (const Exchange& exchange : bench.counter().takeExchanges()) {
        bench.lookAt(exchange);
        bench.expectStatus(exchange.reply, {200});
    }
    bench.expectThat(isTaken, {}, Text::tr("the queue has delivered the check"),
                     Text::tr("it has not"));
    bench.mayBeBooked(papers);
    bench.expectBalance(bench.card(), before, Booking::of(papers.confirmation).change());
}

void laterCheckFirst(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers first = bench.sold(bench.basket());
    const Papers second = bench.sold(bench.basket());
    for (const Papers& papers : {second, first}) {
        bench.mayBeBooked(papers);
        bench.expectStatus(bench.pay(papers.confirmation), {200});
        bench.expectStatus(bench.confirm(papers.confirmation), {200});
    }
    bench.expectBalance(bench.card(), before,
                        Booking::of(first.confirmation).change() +
                            Booking::of(second.confirmation).change());
}

/// A confirmation that was made before the check was asked about once more.
void earlierAnswerCounts(Bench& bench)
{
    const Papers papers = bench.sold(bench.basket());
    Draft changed(papers.precheck.request);
    if (bench.precheck(changed.makeLines(changed.lineCount() + 1).bytes()).status != 200) {
        Bench::cannot(Text::tr("the server does not answer a changed check"));
    }
    bench.mayBeBooked(papers);
    bench.expectStatus(bench.pay(papers.confirmation), {200});
    bench.expectStatus(bench.confirm(papers.confirmation), {200});
}

void isAcknowledged(Bench& bench, const Papers& papers, const Reply& reply)
{
    bench.expectText(u"/RawCheck/id"_s, papers.check.id(), Reading(reply.body).text({names::id}));
}

void acknowledges(Bench& bench)
{
    const Papers papers = bench.sold(bench.basket());
    bench.mayBeBooked(papers);
    isAcknowledged(bench, papers, bench.pay(papers.confirmation));
    isAcknowledged(bench, papers, bench.confirm(papers.confirmation));
}

void acknowledgesInForm(Bench& bench)
{
    const Papers papers = bench.sold(bench.basket());
    bench.mayBeBooked(papers);
    for (const Reply& reply :
         {bench.pay(papers.confirmation), bench.confirm(papers.confirmation)}) {
        if (reply.status == 200 && !reply.body.trimmed().isEmpty()) {
            const auto objection = answerform::objectionTo(u"acknowledgement"_s, reply.body);
            bench.expectThat(!objection, objection ? objection->path : QString(),
                             Text::tr("a document that fits %1").arg(u"acknowledgement"_s),
                             objection ? objection->text : QString());
        }
    }
}

const Case rows[] = {
    {"order-free.later-check-first", "order-free", laterCheckFirst},
    {"status-tells.delivered-by-the-host", "status-tells", deliveredByTheHost},
    {"accrual-scaled.without-points", "accrual-scaled",
     [](Bench& bench) { booksAsConfirmed(bench, bench.sold(bench.basket())); }},
    {"points-as-confirmed.some", "points-as-confirmed",
     [](Bench& bench) { booksAsConfirmed(bench, bench.soldWithPoints(bench.basket(some(1133)))); }},
    {"points-as-confirmed.all-that-may", "points-as-confirmed",
     [](Bench& bench) {
         booksAsConfirmed(bench, bench.soldWithPoints(bench.basket(PointsChoice::all())));
     }},
    {"points-as-confirmed.whole-balance", "points-as-confirmed", wholeBalance},
    {"accrual-scaled.kopeck-of-points", "accrual-scaled",
     [](Bench& bench) { booksAsConfirmed(bench, bench.soldWithPoints(bench.basket(some(1)))); }},
    {"accrual-scaled.each-line-rounded", "accrual-scaled",
     [](Bench& bench) {
         booksAsConfirmed(bench, bench.soldWithPoints(manyRoundings(bench, some(7777))));
     }},
    {"closed-check-booked.two-tills-at-once", "closed-check-booked", twoTillsAtOnce},
    {"balance-booked.other-card", "balance-booked", otherCardStays},
    {"any-answer-counts.earlier-answer", "any-answer-counts", earlierAnswerCounts},
    {"answer-fits-schema.acknowledgement", "answer-fits-schema", acknowledgesInForm},
    {"acknowledged.identifier", "acknowledged", acknowledges},
};

} // namespace

std::span<const Case> bookingCases()
{
    return rows;
}

} // namespace till::verify
