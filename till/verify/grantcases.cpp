// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What an answer grants, and that asking changes nothing.

#include "till/checks/amount.h"
#include "till/text.h"
#include "till/verify/bench.h"
#include "till/verify/cases.h"

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

namespace names = protocol::names;

Names award(const QString& name)
{
    return {names::awards, names::rawItemAwards, name};
}

qint64 granted(const Reading& answer, qsizetype line, const QString& name)
{
    return answer.amountIn(line, award(name)).value_or(0);
}

void isAtMost(Bench& bench, const QString& path, qint64 most, qint64 got)
{
    bench.expectThat(got <= most, path, Text::tr("at most %1").arg(amount::moneyText(most)),
                     amount::moneyText(got));
}

qint64 discountOf(const Reading& answer, qsizetype line)
{
    return granted(answer, line, names::discount) + granted(answer, line, names::discountOnChange);
}

/// Asks for the lines of a sale, of which each may keep so much of its total from discounts.
void forEachLine(Bench& bench, const Draft& request,
                 void (*judge)(Bench&, const Draft&, int line, const Reading&, qsizetype found))
{
    const Reading answer = bench.answered(request.bytes());
    for (int line = 0; line < request.lineCount(); ++line) {
        const qsizetype found = answer.line(request.textInLine(line, {names::id}));
        if (found >= 0) {
            judge(bench, request, line, answer, found);
        }
    }
}

void discountFits(Bench& bench, const Draft& request, int line, const Reading& answer,
                  qsizetype found)
{
    const qint64 room = request.kopecksInLine(line, {names::total}) -
                        request.kopecksInLine(line, {names::minTotal});
    isAtMost(bench, answer.path(found, award(names::discount)), std::max<qint64>(0, room),
             discountOf(answer, found));
}

void allowanceFits(Bench& bench, const Draft& request, int line, const Reading& answer,
                   qsizetype found)
{
    isAtMost(bench, answer.path(found, award(names::allowBonusInCurrency)),
             request.kopecksInLine(line, {names::total}) - discountOf(answer, found),
             granted(answer, found, names::allowBonusInCurrency));
}

void awardFits(Bench& bench, const Draft& request, int line, const Reading& answer, qsizetype found)
{
    isAtMost(bench, answer.path(found, award(names::awardBonus)),
             request.kopecksInLine(line, {names::total}),
             std::abs(granted(answer, found, names::awardBonus)));
}

void allowanceOfCheckFits(Bench& bench, const QByteArray& request)
{
    const Reading answer = bench.answered(request);
    const Names path{names::awards, names::rawCheckAwards, names::allowBonus};
    qint64 sum = 0;
    for (const qsizetype line : answer.lines()) {
        sum += granted(answer, line, names::allowBonusInCurrency);
    }
    const qint64 allowed = answer.amount(path).value_or(0);
    isAtMost(bench, answer.path(0, path), sum, allowed);
    isAtMost(bench, answer.path(0, path), std::max<qint64>(0, answer.balance().value_or(0)),
             allowed);
}

void awardOfCheckFits(Bench& bench)
{
    const Reading answer = bench.answered(bench.freshRequest().bytes());
    const Names path{names::awards, names::rawCheckAwards, names::awardBonus};
    qint64 sum = 0;
    for (const qsizetype line : answer.lines()) {
        sum += granted(answer, line, names::awardBonus);
    }
    bench.expectAmount(answer.path(0, path), sum, answer.amount(path).value_or(0));
}

void asksThreeTimes(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    for (int i = 0; i < 3; ++i) {
        bench.expectStatus(bench.precheck(bench.freshRequest().bytes()), {200});
    }
    bench.expectBalance(bench.card(), before, 0);
}

/// What one check might spend is there for another one until it is spent.
void reservesNothing(Bench& bench)
{
    const Names path{names::awards, names::rawCheckAwards, names::allowBonus};
    const Reading first = bench.answered(bench.freshRequest().bytes());
    const Reading second = bench.answered(bench.freshRequest().bytes());
    bench.expectAmount(first.path(0, path), first.amount(path).value_or(0),
                       second.amount(path).value_or(0));
}

void asksAgain(Bench& bench)
{
    const QByteArray request = bench.freshRequest().bytes();
    const Reading first = bench.answered(request);
    const Reply reply = bench.precheck(request);
    bench.expectStatus(reply, {200});
    const Reading second(reply.body);
    bench.expectText(u"/RawCheck/id"_s, first.text({names::id}), second.text({names::id}));
    bench.expectThat(second.lines().size() == first.lines().size(), u"/RawCheck/items"_s,
                     QString::number(first.lines().size()), QString::number(second.lines().size()));
    for (qsizetype i = 0; i < first.lines().size(); ++i) {
        const qsizetype line = second.lines().at(i);
        for (const QLatin1String name : {names::discount, names::awardBonus}) {
            bench.expectAmount(second.path(line, award(name)),
                               granted(first, first.lines().at(i), name),
                               granted(second, line, name));
        }
    }
}

void asksChanged(Bench& bench)
{
    Draft request = bench.freshRequest();
    static_cast<void>(bench.answered(request.bytes()));
    const int before = request.lineCount();
    request.makeLines(before + 1);
    const Reply reply = bench.precheck(request.bytes());
    bench.expectStatus(reply, {200});
    const Reading answer(reply.body);
    bench.expectThat(answer.lines().size() == before + 1, u"/RawCheck/items"_s,
                     QString::number(before + 1), QString::number(answer.lines().size()));
    bench.expectText(u"/RawCheck/total"_s, request.text({names::total}),
                     answer.text({names::total}));
}

/// Discounts may take nothing of a line whose least total is its total, or above it.
Draft withoutRoom(Bench& bench)
{
    Draft request = bench.freshRequest();
    return request.setInLine(0, {names::minTotal}, request.textInLine(0, {names::total}))
        .setInLine(1, {names::minTotal}, u"1000.00"_s);
}

const Case rows[] = {
    {"precheck-books-nothing.balance", "precheck-books-nothing", asksThreeTimes},
    {"discount-within-line.usual", "discount-within-line",
     [](Bench& bench) { forEachLine(bench, bench.freshRequest(), discountFits); }},
    {"discount-within-line.no-room", "discount-within-line",
     [](Bench& bench) { forEachLine(bench, withoutRoom(bench), discountFits); }},
    {"allow-within-line.usual", "allow-within-line",
     [](Bench& bench) { forEachLine(bench, bench.freshRequest(), allowanceFits); }},
    {"award-within-line.usual", "award-within-line",
     [](Bench& bench) { forEachLine(bench, bench.freshRequest(), awardFits); }},
    {"check-allow.usual", "check-allow",
     [](Bench& bench) { allowanceOfCheckFits(bench, bench.freshRequest().bytes()); }},
    {"check-allow.dear-check", "check-allow",
     [](Bench& bench) {
         Draft request = bench.freshRequest();
         request.setInLine(0, {names::total}, u"5000000.00"_s).makeLines(3);
         allowanceOfCheckFits(bench, request.bytes());
     }},
    {"check-allow.second-card", "check-allow",
     [](Bench& bench) {
         allowanceOfCheckFits(
             bench, bench.freshRequest().set({names::cardNumber}, bench.secondCard()).bytes());
     }},
    {"check-award.sum", "check-award", awardOfCheckFits},
    {"precheck-books-nothing.reserves-nothing", "precheck-books-nothing", reservesNothing},
    {"precheck-repeatable.same", "precheck-repeatable", asksAgain},
    {"precheck-repeatable.changed", "precheck-repeatable", asksChanged},
};

} // namespace

std::span<const Case> grantCases()
{
    return rows;
}

} // namespace till::verify
