// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Returns that a server must not take.

#include "till/checks/amount.h"
#include "till/text.h"
#include "till/verify/bench.h"
#include "till/verify/cases.h"

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

namespace names = protocol::names;

constexpr qint64 piece = 1000;
Names givenBack()
{
    return {names::returnedAwards, names::rawItemReturnedAwards, names::usedBonusInCurrency};
}

QString more(const QString& text, qint64 kopecks)
{
    return amount::moneyText(readAmount(text).value_or(0) + kopecks);
}

Papers threePieces(Bench& bench)
{
    return bench.booked(bench.soldWithPoints(bench.pieces(3, 3333, PointsChoice::sum(4700))));
}

/// The document of a return of one of three pieces, which is not sent.
struct Back
{
    Papers sale;
    Papers papers;
    Draft draft;
};

Back onePiece(Bench& bench)
{
    Papers sale = threePieces(bench);
    Papers papers = bench.takenBack(sale, {{1, piece}});
    Draft draft(papers.confirmation);
    return {std::move(sale), std::move(papers), std::move(draft)};
}

void isRefused(Bench& bench, Draft& (*change)(Draft&, const Bench&))
{
    Back back = onePiece(bench);
    const qint64 before = bench.balance(bench.card());
    change(back.draft.makeNew(), bench);
    bench.expectRefusal(bench.precheck(back.draft.bytes()), 424);
    bench.expectBalance(bench.card(), before, 0);
}

/// Line and check say the same wrong sum.
Draft& dearer(Draft& draft, const Bench&)
{
    return draft.setInLine(0, {names::total}, more(draft.textInLine(0, {names::total}), 1))
        .set({names::total}, more(draft.text({names::total}), 1));
}

Draft& fourPieces(Draft& draft, const Bench&)
{
    return draft.setInLine(0, {names::returnedQuantity}, u"4.000"_s)
        .setInLine(0, {names::total}, u"133.32"_s)
        .set({names::total}, u"133.32"_s)
        .setInLine(0, givenBack(), u"62.67"_s);
}

/// One piece is left, and two come back.
void oneTooMany(Bench& bench)
{
    const Papers sale = threePieces(bench);
    const Papers first = bench.returned(sale, {{1, 2 * piece}});
    const qint64 before = bench.balance(bench.card());
    bench.expectRefusal(bench.precheck(Draft(first.confirmation).makeNew().bytes()), 424);
    bench.expectBalance(bench.card(), before, 0);
}

void saleIsOnlyPrechecked(Bench& bench)
{
    Back back = onePiece(bench);
    const Papers open = bench.sold(bench.pieces(3, 3333));
    back.draft.makeNew().set({names::originalId}, open.check.id());
    back.draft.removeFromLine(0, {names::returnedAwards});
    bench.expectRefusal(bench.precheck(back.draft.bytes()), 424);
}

void returnOfAReturn(Bench& bench)
{
    const Papers first = bench.returned(threePieces(bench), {{1, piece}});
    Draft second(first.confirmation);
    second.makeNew().set({names::originalId}, first.check.id());
    bench.expectRefusal(bench.precheck(second.bytes()), 424);
}

/// Two tills take the same goods back at the same time.
void twoTillsTakeItBack(Bench& bench)
{
    const Papers sale = bench.booked(bench.pieces(1, 9900));
    const qint64 before = bench.balance(bench.card());
    const Papers first = bench.takenBack(sale, {{1, piece}});
    const QByteArray second = Draft(first.confirmation).makeNew().bytes();
    for (const QByteArray& document : {first.confirmation, second}) {
        if (bench.precheck(document).status != 200 || bench.pay(document).status != 200) {
            Bench::cannot(Text::tr("the server does not try two returns of one sale"));
        }
    }
    if (bench.confirm(first.confirmation).status != 200) {
        Bench::cannot(Text::tr("the server does not book a return"));
    }
    bench.expectRefusal(bench.confirm(second), 424);
    bench.expectBalance(bench.card(), before,
                        first.check.givenBackKopecks() - first.check.takenBackKopecks());
}

void outOfOrder(Bench& bench, Reply (Bench::*step)(const QByteArray&), bool isPrechecked)
{
    Back back = onePiece(bench);
    const QByteArray document = back.draft.makeNew().bytes();
    if (isPrechecked && bench.precheck(document).status != 200) {
        Bench::cannot(Text::tr("the server does not answer a return"));
    }
    bench.expectRefusal((bench.*step)(document), 424);
}

const Case rows[] = {
    {"return-of-booked-sale.unknown-sale", "return-of-booked-sale",
     [](Bench& bench) {
         isRefused(bench, [](Draft& draft, const Bench&) -> Draft& {
             return draft.set({names::originalId}, u"no-such-sale"_s);
         });
     }},
    {"return-of-booked-sale.other-card", "return-of-booked-sale",
     [](Bench& bench) {
         isRefused(bench, [](Draft& draft, const Bench& at) -> Draft& {
             return draft.set({names::cardNumber}, at.secondCard());
         });
     }},
    {"return-of-booked-sale.only-prechecked", "return-of-booked-sale", saleIsOnlyPrechecked},
    {"return-of-booked-sale.return", "return-of-booked-sale", returnOfAReturn},
    {"return-within-sale.more-than-sold", "return-within-sale",
     [](Bench& bench) { isRefused(bench, fourPieces); }},
    {"return-within-sale.one-too-many", "return-within-sale", oneTooMany},
    {"return-within-sale.no-such-line", "return-within-sale",
     [](Bench& bench) {
         isRefused(bench, [](Draft& draft, const Bench&) -> Draft& {
             return draft.setInLine(0, {names::id}, u"9"_s);
         });
     }},
    {"return-within-sale.other-goods", "return-within-sale",
     [](Bench& bench) {
         isRefused(bench, [](Draft& draft, const Bench&) -> Draft& {
             return draft.setInLine(0, {names::sku}, u"no-such-goods"_s);
         });
     }},
    {"return-shares-agree.total", "return-shares-agree",
     [](Bench& bench) { isRefused(bench, dearer); }},
    {"return-shares-agree.points", "return-shares-agree",
     [](Bench& bench) {
         isRefused(bench, [](Draft& draft, const Bench&) -> Draft& {
             return draft.setInLine(0, givenBack(), more(draft.textInLine(0, givenBack()), 1));
         });
     }},
    {"return-shares-agree.points-left-out", "return-shares-agree",
     [](Bench& bench) {
         isRefused(bench, [](Draft& draft, const Bench&) -> Draft& {
             return draft.removeFromLine(0, {names::returnedAwards});
         });
     }},
    {"return-judged-anew.two-tills", "return-judged-anew", twoTillsTakeItBack},
    {"return-steps.try-without-precheck", "return-steps",
     [](Bench& bench) { outOfOrder(bench, &Bench::pay, false); }},
    {"return-steps.confirmation-without-try", "return-steps",
     [](Bench& bench) { outOfOrder(bench, &Bench::confirm, true); }},
};

} // namespace

std::span<const Case> returnRefusalCases()
{
    return rows;
}

} // namespace till::verify
