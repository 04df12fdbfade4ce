// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A plain sale and its return: taken step by step, and seen in the balance. What fails here fails
// in most of the cases that sell too, whatever they are about.

#include "till/text.h"
#include "till/verify/bench.h"
#include "till/verify/cases.h"

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

namespace names = protocol::names;

/// Booked, and yet told as trouble: seen by the confirmation that comes again.
void confirmationIsTold(Bench& bench)
{
    const Papers papers = bench.sold(bench.basket());
    bench.mayBeBooked(papers);
    static_cast<void>(bench.pay(papers.confirmation));
    const Reply reply = bench.confirm(papers.confirmation);
    const Exchange about{bench.ways().confirm, papers.confirmation, reply};
    if (reply.status >= 500 && bench.confirm(papers.confirmation).status == 409) {
        throw Broken{{u"book-once"_s, about, {}, u"200"_s, reply.shown()}};
    }
    bench.lookAt(about);
    bench.expectStatus(reply, {200});
}

void tryBooksNothing(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers papers = bench.soldWithPoints(bench.basket(PointsChoice::all()));
    bench.mayBeBooked(papers);
    bench.expectStatus(bench.pay(papers.confirmation), {200});
    bench.expectBalance(bench.card(), before, 0);
}

/// A balance that does not follow the books at all, or counts otherwise than in money.
void balanceFollows(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers papers = bench.booked(bench.basket());
    const Exchange about = bench.trail().last();
    const qint64 expected = Booking::of(papers.confirmation).change();
    const qint64 change = bench.balance(bench.card()) - before;
    if (expected == 0) {
        Bench::cannot(Text::tr("the goods earn no points"));
    }
    bench.lookAt(about);
    if (change == 0 || change == expected * 100) {
        bench.expectAmount(u"/RawCheck/"_s + Reading::balancePath().join(u'/'), before + expected,
                           before + change);
    }
}

/// What a check would earn or spend is no part of the balance that its answer says.
void balanceIsTheCards(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    Draft dear = bench.freshRequest(); // earns more than the check that the balance came with
    dear.setInLine(0, {names::total}, u"4321.00"_s).makeLines(3);
    const Reading answer = bench.answered(dear.bytes());
    bench.expectAmount(answer.path(0, Reading::balancePath()), before, answer.balance());
}

/// Back to what the card held before the sale. Played before others sell for points: a card that
/// gets none back has none left for them.
void wholeReturn(Bench& bench, const PointsChoice& points)
{
    const qint64 before = bench.balance(bench.card());
    const Papers sale = bench.booked(bench.sold(bench.basket(points)));
    const qint64 between = bench.balance(bench.card());
    QHash<int, qint64> all;
    for (const Line& line : sale.check.lines) {
        all.insert(line.position, line.thousandths);
    }
    static_cast<void>(bench.returned(sale, all));
    bench.expectBalance(bench.card(), between, before - between);
}

const Case rows[] = {
    {"status-tells.payment-try", "status-tells",
     [](Bench& bench) {
         bench.expectStatus(bench.pay(bench.sold(bench.basket()).confirmation), {200});
     }},
    {"status-tells.confirmation", "status-tells", confirmationIsTold},
    {"try-books-nothing.balance", "try-books-nothing", tryBooksNothing},
    {"balance-booked.follows", "balance-booked", balanceFollows},
    {"balance-booked.whatever-is-sold", "balance-booked", balanceIsTheCards},
    {"return-books.whole", "return-books", [](Bench& bench) { wholeReturn(bench, {}); }},
    {"return-books.whole-with-points", "return-books",
     [](Bench& bench) { wholeReturn(bench, PointsChoice::all()); }},
};

} // namespace

std::span<const Case> saleCases()
{
    return rows;
}

} // namespace till::verify
