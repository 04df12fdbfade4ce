// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What does not agree, and how a refusal is said.

#include "till/checks/amount.h"
#include "till/text.h"
#include "till/verify/bench.h"
#include "till/verify/cases.h"

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

namespace names = protocol::names;

Names paid()
{
    return {names::payments, names::rawCheckPayment, names::amount};
}

Names usedDiscount()
{
    return {names::usedAwards, names::rawItemUsedAwards, names::usedDiscount};
}

Names usedPoints()
{
    return {names::usedAwards, names::rawItemUsedAwards, names::usedBonusInCurrency};
}

QString more(const QString& text, qint64 kopecks)
{
    return amount::moneyText(readAmount(text).value_or(0) + kopecks);
}

/// A document that must be refused with 424, as a payment try already. A server that only notices
/// it with the confirmation judges tries wrongly, one that never does does not judge at all.
void isRefused(Bench& bench, const Papers& papers, const QByteArray& document)
{
    bench.mayBeBooked(papers);
    const Reply trying = bench.pay(document);
    if (trying.status != 200) {
        bench.expectRefusal(trying, 424);
        return;
    }
    const Exchange about{bench.ways().paymentTry, document, trying};
    const Reply confirming = bench.confirm(document);
    if (confirming.status == 424) {
        throw Broken{{u"try-judges"_s, about, {}, u"424"_s, trying.shown()}};
    }
    bench.lookAt(about);
    bench.expectRefusal(trying, 424);
}

void paidIsWrong(Bench& bench, qint64 by)
{
    const Papers papers = bench.sold(bench.basket());
    Draft draft(papers.confirmation);
    isRefused(bench, papers, draft.set(paid(), more(draft.text(paid()), by)).bytes());
}

/// Uses a kopeck more than all that was granted on the first line, and pays that much less.
void usesMore(Bench& bench, const Names& used, const QString& granted, const QString& beside)
{
    const Papers papers = bench.sold(bench.basket());
    Draft draft(papers.confirmation);
    const Names awards{names::awards, names::rawItemAwards};
    const qint64 most = draft.kopecksInLine(0, awards + Names{granted}) +
                        (beside.isEmpty() ? 0 : draft.kopecksInLine(0, awards + Names{beside}));
    const Booking before = Booking::of(draft.bytes());
    while (draft.textInLine(0, used) != QString()) {
        draft.removeFromLine(0, used);
    }
    draft.setInLine(0, used, amount::moneyText(most + 1));
    const Booking after = Booking::of(draft.bytes());
    const qint64 less = after.discount + after.spent - before.discount - before.spent;
    isRefused(bench, papers, draft.set(paid(), more(draft.text(paid()), -less)).bytes());
}

void isAnotherCheck(Bench& bench, Draft& (*change)(Draft&, const Bench&))
{
    const Papers papers = bench.sold(bench.basket());
    Draft draft(papers.confirmation);
    isRefused(bench, papers, change(draft, bench).bytes());
}

/// Both totals and the payment say more than was asked about.
Draft& dearer(Draft& draft, const Bench&)
{
    return draft.setInLine(0, {names::total}, more(draft.textInLine(0, {names::total}), 100))
        .set({names::total}, more(draft.text({names::total}), 100))
        .set(paid(), more(draft.text(paid()), 100));
}

void neverPrechecked(Bench& bench, Reply (Bench::*step)(const QByteArray&))
{
    const Papers papers = bench.sold(bench.basket());
    bench.expectRefusal((bench.*step)(Draft(papers.confirmation).makeNew().bytes()), 424);
}

void neverTried(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers papers = bench.sold(bench.basket());
    bench.mayBeBooked(papers);
    bench.expectRefusal(bench.confirm(papers.confirmation), 424);
    bench.expectBalance(bench.card(), before, 0);
}

void correctedIsTaken(Bench& bench)
{
    const qint64 before = bench.balance(bench.card());
    const Papers papers = bench.sold(bench.basket());
    Draft wrong(papers.confirmation);
    const Reply refused = bench.pay(wrong.set(paid(), more(wrong.text(paid()), 1)).bytes());
    if (refused.status != 424) {
        Bench::cannot(Text::tr("the server does not refuse a wrong payment"));
    }
    bench.expectBalance(bench.card(), before, 0);
    bench.mayBeBooked(papers);
    bench.expectStatus(bench.pay(papers.confirmation), {200});
    bench.expectStatus(bench.confirm(papers.confirmation), {200});
    bench.expectBalance(bench.card(), before, Booking::of(papers.confirmation).change());
}

/// What was tried before a refused try can still be confirmed.
void earlierTryStands(Bench& bench)
{
    const Papers papers = bench.sold(bench.basket());
    bench.mayBeBooked(papers);
    Draft wrong(papers.confirmation);
    wrong.set(paid(), more(wrong.text(paid()), 1));
    if (bench.pay(papers.confirmation).status != 200 || bench.pay(wrong.bytes()).status != 424) {
        Bench::cannot(Text::tr("the server does not refuse a wrong payment"));
    }
    bench.expectStatus(bench.confirm(papers.confirmation), {200});
}

/// A pre-check that is refused leaves the answer before it standing.
void refusedPrecheckLeavesAnswer(Bench& bench)
{
    const Papers papers = bench.sold(bench.basket());
    Draft wrong(papers.precheck.request);
    const Reply refused =
        bench.precheck(wrong.set({names::total}, more(wrong.text({names::total}), 1)).bytes());
    if (refused.status != 424) {
        Bench::cannot(Text::tr("the server does not refuse a wrong sum"));
    }
    bench.mayBeBooked(papers);
    bench.expectStatus(bench.pay(papers.confirmation), {200});
    bench.expectStatus(bench.confirm(papers.confirmation), {200});
}

constexpr QLatin1StringView nobodysCard{"9900000000007"};

Reply refusal(Bench& bench)
{
    const Reply reply =
        bench.precheck(bench.freshRequest().set({names::cardNumber}, nobodysCard).bytes());
    if (reply.status < 400) {
        Bench::cannot(Text::tr("the server refuses nothing"));
    }
    return reply;
}

void refusalIsASentence(Bench& bench)
{
    const Reply reply = refusal(bench);
    const QString text = QString::fromUtf8(reply.body).trimmed();
    bench.expectThat(!text.isEmpty() && !text.startsWith(u'<'), {},
                     Text::tr("a sentence of plain text"),
                     text.isEmpty() ? Text::tr("nothing") : text.left(80).simplified());
}

void refusalHidesCard(Bench& bench)
{
    const Reply reply = refusal(bench);
    bench.expectThat(!reply.body.contains(QByteArray(nobodysCard.data())), {},
                     Text::tr("no whole card number"),
                     QString::fromUtf8(reply.body).left(80).simplified());
}

void refusalHidesCredentials(Bench& bench)
{
    QByteArray value;
    for (const auto& [name, text] : bench.ways().headers) {
        value = name.compare("Authorization", Qt::CaseInsensitive) == 0 ? text : value;
    }
    const QByteArray wrong = QByteArray("till-nobody:sha1:") + QByteArray(40, '7') + ":no-such-key";
    const Reply reply =
        bench.send(bench.outgoing(bench.ways().precheck, bench.freshRequest().bytes())
                       .with("Authorization", "Basic " + wrong.toBase64()));
    const bool tells = reply.body.contains(QByteArray(40, '7')) ||
                       reply.body.contains("no-such-key") || reply.body.contains(value.mid(6)) ||
                       reply.body.contains(wrong.toBase64());
    bench.expectThat(!tells, {}, Text::tr("no credentials"),
                     QString::fromUtf8(reply.body).left(80).simplified());
}

const Case rows[] = {
    {"payment-agrees.kopeck-more", "payment-agrees", [](Bench& bench) { paidIsWrong(bench, 1); }},
    {"payment-agrees.kopeck-less", "payment-agrees", [](Bench& bench) { paidIsWrong(bench, -1); }},
    {"try-judges.payment", "try-judges", [](Bench& bench) { paidIsWrong(bench, 100); }},
    {"used-within-granted.discount", "used-within-granted",
     [](Bench& bench) {
         usesMore(bench, usedDiscount(), names::discount, names::discountOnChange);
     }},
    {"used-within-granted.points", "used-within-granted",
     [](Bench& bench) { usesMore(bench, usedPoints(), names::allowBonusInCurrency, {}); }},
    {"same-check.other-card", "same-check",
     [](Bench& bench) {
         isAnotherCheck(bench, [](Draft& draft, const Bench& at) -> Draft& {
             return draft.set({names::cardNumber}, at.secondCard());
         });
     }},
    {"same-check.other-goods", "same-check",
     [](Bench& bench) {
         isAnotherCheck(bench, [](Draft& draft, const Bench&) -> Draft& {
             return draft.setInLine(0, {names::sku}, draft.textInLine(0, {names::sku}) + u'9');
         });
     }},
    {"same-check.other-quantity", "same-check",
     [](Bench& bench) {
         isAnotherCheck(bench, [](Draft& draft, const Bench&) -> Draft& {
             return draft.setInLine(0, {names::quantity}, u"3.000"_s);
         });
     }},
    {"same-check.other-total", "same-check", [](Bench& bench) { isAnotherCheck(bench, dearer); }},
    {"steps-in-order.try-without-precheck", "steps-in-order",
     [](Bench& bench) { neverPrechecked(bench, &Bench::pay); }},
    {"steps-in-order.confirmation-without-precheck", "steps-in-order",
     [](Bench& bench) { neverPrechecked(bench, &Bench::confirm); }},
    {"steps-in-order.confirmation-without-try", "steps-in-order", neverTried},
    {"refusal-changes-nothing.payment-try", "refusal-changes-nothing", correctedIsTaken},
    {"refusal-changes-nothing.earlier-try", "refusal-changes-nothing", earlierTryStands},
    {"refusal-changes-nothing.precheck", "refusal-changes-nothing", refusedPrecheckLeavesAnswer},
    {"refusal-says-why.sentence", "refusal-says-why", refusalIsASentence},
    {"refusal-says-why.card-hidden", "refusal-says-why", refusalHidesCard},
    {"refusal-says-why.credentials-hidden", "refusal-says-why", refusalHidesCredentials},
};

} // namespace

std::span<const Case> refusalCases()
{
    return rows;
}

} // namespace till::verify
