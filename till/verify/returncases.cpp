// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a return gives back and takes back.

#include "till/checks/amount.h"
#include "till/text.h"
#include "till/verify/answerform.h"
#include "till/verify/bench.h"
#include "till/verify/cases.h"

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

namespace names = protocol::names;

constexpr qint64 piece = 1000;

/// All lines of a check.
QHash<int, qint64> whole(const Papers& sale)
{
    QHash<int, qint64> all;
    for (const Line& line : sale.check.lines) {
        all.insert(line.position, line.thousandths);
    }
    return all;
}

Papers threePieces(Bench& bench)
{
    return bench.booked(bench.soldWithPoints(bench.pieces(3, 3333, PointsChoice::sum(4700))));
}

/// What the till counts for a return of its.
qint64 changeOf(const Papers& back)
{
    return back.check.givenBackKopecks() - back.check.takenBackKopecks();
}

void onePart(Bench& bench)
{
    const Papers sale = threePieces(bench);
    const qint64 before = bench.balance(bench.card());
    const Papers back = bench.returned(sale, {{1, piece}});
    bench.expectBalance(bench.card(), before, changeOf(back));
}

void pieceByPiece(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers sale = threePieces(bench);
    for (int i = 0; i < 3; ++i) {
        static_cast<void>(bench.returned(sale, {{1, piece}}));
    }
    bench.expectBalance(bench.card(), before, 0);
}

/// Every part to the kopeck, not only their sum.
void eachPartExact(Bench& bench)
{
    const Papers sale = threePieces(bench);
    for (int i = 0; i < 3; ++i) {
        const qint64 before = bench.balance(bench.card());
        const Papers back = bench.returned(sale, {{1, piece}});
        bench.expectBalance(bench.card(), before, changeOf(back));
    }
}

void lineByLine(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers sale = bench.booked(bench.sold(bench.basket(PointsChoice::sum(3511))));
    static_cast<void>(bench.returned(sale, {{2, 333}}));
    static_cast<void>(bench.returned(sale, {{1, piece}, {3, piece}}));
    static_cast<void>(bench.returned(sale, {{1, piece}, {2, 432}}));
    bench.expectBalance(bench.card(), before, 0);
}

void askingBooksNothing(Bench& bench)
{
    const Papers sale = bench.booked(bench.basket());
    const qint64 before = bench.balance(bench.card());
    const Papers back = bench.takenBack(sale, {{1, piece}});
    bench.expectStatus(bench.precheck(back.confirmation), {200});
    bench.expectStatus(bench.pay(back.confirmation), {200});
    bench.expectBalance(bench.card(), before, 0);
}

void answersWithWhatIsTakenBack(Bench& bench)
{
    const Papers sale = bench.booked(bench.basket());
    const Papers back = bench.takenBack(sale, whole(sale));
    const Reply reply = bench.precheck(back.confirmation);
    bench.expectStatus(reply, {200});
    const Reading answer(reply.body);
    qint64 sum = 0;
    for (const Line& line : back.check.lines) {
        const qsizetype found = answer.line(QString::number(line.position));
        const Names awards{names::awards, names::rawItemAwards};
        bench.expectThat(found >= 0, u"/RawCheck/items/RawItem/id"_s,
                         QString::number(line.position), Text::tr("nothing"));
        bench.expectAmount(answer.path(found, awards + Names{names::awardBonus}),
                           -line.takenBackKopecks,
                           answer.amountIn(found, awards + Names{names::awardBonus}).value_or(0));
        for (const QLatin1String name :
             {names::discount, names::discountOnChange, names::allowBonusInCurrency}) {
            bench.expectAmount(answer.path(found, awards + Names{name}), 0,
                               answer.amountIn(found, awards + Names{name}).value_or(0));
        }
        sum -= line.takenBackKopecks;
    }
    const Names check{names::awards, names::rawCheckAwards};
    bench.expectAmount(answer.path(0, check + Names{names::awardBonus}), sum,
                       answer.amount(check + Names{names::awardBonus}).value_or(0));
    bench.expectAmount(answer.path(0, check + Names{names::allowBonus}), 0,
                       answer.amount(check + Names{names::allowBonus}).value_or(0));
}

void answerToReturnFits(Bench& bench)
{
    const Papers sale = bench.booked(bench.basket());
    const Reply reply = bench.precheck(bench.takenBack(sale, whole(sale)).confirmation);
    bench.expectStatus(reply, {200});
    const auto objection = answerform::objectionTo(u"answer"_s, reply.body);
    bench.expectThat(!objection, objection ? objection->path : QString(),
                     Text::tr("a document that fits %1").arg(u"answer"_s),
                     objection ? objection->text : QString());
}

void confirmedAgain(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers sale = bench.booked(bench.basket());
    const Papers back = bench.returned(sale, whole(sale));
    bench.expectStatus(bench.confirm(back.confirmation), {409});
    bench.expectStatus(bench.pay(back.confirmation), {200});
    bench.expectStatus(bench.precheck(back.confirmation), {409});
    bench.expectBalance(bench.card(), before, 0);
}

/// As a shop does it: the host's queue brings the return in three steps.
void deliveredByTheHost(Bench& bench)
{
    const Papers sale = bench.booked(bench.basket());
    const Papers back = bench.takenBack(sale, {{1, piece}});
    static_cast<void>(bench.counter().deliver(back));
    for (const Exchange& exchange : bench.counter().takeExchanges()) {
        bench.lookAt(exchange);
        bench.expectStatus(exchange.reply, {200});
    }
}

const Case rows[] = {
    {"return-steps.delivered-by-the-host", "return-steps", deliveredByTheHost},
    {"return-steps.asking-books-nothing", "return-steps", askingBooksNothing},
    {"return-books.one-part", "return-books", onePart},
    {"returns-add-up.piece-by-piece", "returns-add-up", pieceByPiece},
    {"returns-add-up.line-by-line", "returns-add-up", lineByLine},
    {"return-books.each-part-exact", "return-books", eachPartExact},
    {"return-answer.what-is-taken-back", "return-answer", answersWithWhatIsTakenBack},
    {"answer-fits-schema.return", "answer-fits-schema", answerToReturnFits},
    {"return-steps.confirmed-again", "return-steps", confirmedAgain},
};

} // namespace

std::span<const Case> returnCases()
{
    return rows;
}

} // namespace till::verify
