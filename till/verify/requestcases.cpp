// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a request may hold: texts, numbers, dates, many lines and none, and what is no check.

#include "till/text.h"
#include "till/verify/bench.h"
#include "till/verify/cases.h"

#include <QRegularExpression>
#include <QStringEncoder>

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

namespace names = protocol::names;

constexpr int manyLines = 1000;

/// A text in the fields that come back from every server: the check's identifier and goods code.
void textComesBack(Bench& bench, const QString& text, const QByteArray& before = {})
{
    Draft request = bench.freshRequest();
    const QString id = request.text({names::id}) + text;
    request.set({names::id}, id).setInLine(1, {names::sku}, text);
    const Reply reply = bench.precheck(before + request.bytes());
    bench.expectStatus(reply, {200});
    const Reading answer(reply.body);
    bench.expectText(u"/RawCheck/id"_s, id, answer.text({names::id}));
    const qsizetype line = answer.line(request.textInLine(1, {names::id}));
    if (line >= 0 && answer.xml().find(line, {names::sku}) >= 0) {
        bench.expectText(answer.path(line, {names::sku}), text, answer.textIn(line, {names::sku}));
    }
}

void dateIsKept(Bench& bench, const QString& date)
{
    const Reply reply = bench.precheck(bench.freshRequest().set({names::date}, date).bytes());
    bench.expectStatus(reply, {200});
    const Reading answer(reply.body);
    if (answer.has({names::date})) {
        bench.expectText(u"/RawCheck/date"_s, date, answer.text({names::date}));
    }
}

void isAnswered(Bench& bench, const QByteArray& request)
{
    bench.expectStatus(bench.precheck(request), {200});
}

/// The document without any white space between elements, and some of its letters as numbers.
QByteArray writtenOtherwise(const QByteArray& document)
{
    QString text = QString::fromUtf8(document);
    text.replace(QRegularExpression(u">\\s+<"_s), u"><"_s);
    text.replace(u"<chType>1</chType>"_s, u"<chType>&#49;</chType>"_s);
    return text.toUtf8();
}

void otherLayoutIsTheSame(Bench& bench)
{
    const Papers papers = bench.sold(bench.basket());
    bench.mayBeBooked(papers);
    bench.expectStatus(bench.pay(papers.confirmation), {200});
    bench.expectStatus(bench.confirm(writtenOtherwise(papers.confirmation)), {200});
}

/// Two lines whose sum no binary fraction has.
void dimesAddUp(Bench& bench)
{
    Draft request = bench.freshRequest();
    request.setInLine(0, {names::total}, u"0.10"_s)
        .setInLine(1, {names::total}, u"0.20"_s)
        .setInLine(2, {names::total}, u"1.10"_s)
        .setInLine(0, {names::minTotal}, u"0.00"_s)
        .makeLines(3);
    isAnswered(bench, request.bytes());
}

Draft dearest(Bench& bench)
{
    Draft request = bench.freshRequest();
    request.setInLine(0, {names::total}, u"90000000000.01"_s).makeLines(3);
    return request;
}

void dearestComesBack(Bench& bench)
{
    const Draft request = dearest(bench);
    const Reply reply = bench.precheck(request.bytes());
    bench.expectStatus(reply, {200});
    const Reading answer(reply.body);
    bench.expectAmount(u"/RawCheck/total"_s, *readAmount(request.text({names::total})),
                       answer.amount({names::total}));
}

void thousandLines(Bench& bench)
{
    const Reply reply = bench.precheck(bench.freshRequest().makeLines(manyLines).bytes());
    bench.expectStatus(reply, {200});
    bench.expectThat(Reading(reply.body).lines().size() == manyLines, u"/RawCheck/items"_s,
                     QString::number(manyLines),
                     QString::number(Reading(reply.body).lines().size()));
}

void thousandLinesBooked(Bench& bench)
{
    Basket basket = bench.basket();
    for (int position = 4; position <= manyLines; ++position) {
        Line line = basket.lines.last();
        line.position = position;
        basket.lines.append(line);
    }
    const qint64 before = bench.balance(bench.card());
    const Papers papers = bench.sold(basket);
    bench.mayBeBooked(papers);
    bench.expectStatus(bench.pay(papers.confirmation), {200});
    bench.expectStatus(bench.confirm(papers.confirmation), {200});
    bench.expectBalance(bench.card(), before, Booking::of(papers.confirmation).change());
}

void isMalformed(Bench& bench, const QByteArray& body)
{
    bench.expectRefusal(bench.precheck(body), 400);
}

/// A check whose goods code has letters of that encoding, which are no UTF-8.
QByteArray inWindows1251(Bench& bench)
{
    const QByteArray place = "no-letters-yet";
    const QByteArray letters = "\xd9\xb8\xf2\xea\xe0";
    return bench.freshRequest()
        .setInLine(1, {names::sku}, QString::fromLatin1(place))
        .bytes()
        .replace(place, letters);
}

void isMalformedInUtf16(Bench& bench)
{
    QStringEncoder utf16(QStringConverter::Utf16, QStringConverter::Flag::WriteBom);
    isMalformed(bench, utf16(QString::fromUtf8(bench.freshRequest().bytes())));
}

QByteArray cut(QByteArray document, const QByteArray& from, const QByteArray& to)
{
    return document.replace(from, to);
}

void totalIsWrong(Bench& bench, qint64 by)
{
    Draft request = bench.freshRequest();
    const qint64 total = *readAmount(request.text({names::total})) + by;
    bench.expectRefusal(
        bench.precheck(
            request.set({names::total}, QString::number(double(total) / 100, 'f', 2)).bytes()),
        424);
}

const Case rows[] = {
    {"unknown-card.precheck", "unknown-card",
     [](Bench& bench) {
         bench.expectRefusal(
             bench.precheck(
                 bench.freshRequest().set({names::cardNumber}, u"0000000000000"_s).bytes()),
             424);
     }},
    {"sums-agree.kopeck-more", "sums-agree", [](Bench& bench) { totalIsWrong(bench, 1); }},
    {"sums-agree.kopeck-less", "sums-agree", [](Bench& bench) { totalIsWrong(bench, -1); }},
    {"line-ids-unique.twice", "line-ids-unique",
     [](Bench& bench) {
         bench.expectRefusal(
             bench.precheck(bench.freshRequest().setInLine(1, {names::id}, u"1"_s).bytes()), 424);
     }},
    {"empty-check.no-lines", "empty-check",
     [](Bench& bench) {
         Draft request = bench.freshRequest();
         isAnswered(bench, request.set({names::items}, {}).set({names::total}, u"0.00"_s).bytes());
     }},
    {"malformed-400.no-xml", "malformed-400",
     [](Bench& bench) { isMalformed(bench, "card=2200000000017&total=1"); }},
    {"malformed-400.cut-off", "malformed-400",
     [](Bench& bench) { isMalformed(bench, bench.freshRequest().bytes().chopped(20)); }},
    {"malformed-400.other-root", "malformed-400",
     [](Bench& bench) {
         isMalformed(bench, bench.freshRequest().bytes().replace("RawCheck>", "Receipt>"));
     }},
    {"malformed-400.no-identifier", "malformed-400",
     [](Bench& bench) {
         const Draft request = bench.freshRequest();
         isMalformed(bench, cut(request.bytes(),
                                "<id>" + request.text({names::id}).toUtf8() + "</id>", {}));
     }},
    {"malformed-400.total-no-number", "malformed-400",
     [](Bench& bench) {
         isMalformed(bench, bench.freshRequest().set({names::total}, u"much"_s).bytes());
     }},
    {"malformed-400.windows-1251", "malformed-400",
     [](Bench& bench) { isMalformed(bench, inWindows1251(bench)); }},
    {"malformed-400.declared-windows-1251", "malformed-400",
     [](Bench& bench) {
         isMalformed(bench,
                     "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n" + inWindows1251(bench));
     }},
    {"malformed-400.utf-16", "malformed-400", isMalformedInUtf16},
    {"texts-kept.cyrillic", "texts-kept",
     [](Bench& bench) { textComesBack(bench, u"Щётка-Ёж"_s); }},
    {"texts-kept.beyond-two-bytes", "texts-kept",
     [](Bench& bench) { textComesBack(bench, u"価\U0001F34E\u0301"_s); }},
    {"texts-kept.escapes", "texts-kept", [](Bench& bench) { textComesBack(bench, u"<A&B>\"'"_s); }},
    {"texts-kept.declaration", "texts-kept",
     [](Bench& bench) {
         textComesBack(bench, u"Яблоко"_s, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
     }},
    {"layout-free.confirmation", "layout-free", otherLayoutIsTheSame},
    {"unknown-elements.check", "unknown-elements",
     [](Bench& bench) {
         isAnswered(bench, bench.freshRequest().set({u"cashierShift"_s}, u"4"_s).bytes());
     }},
    {"unknown-elements.line", "unknown-elements",
     [](Bench& bench) {
         isAnswered(bench, bench.freshRequest().setInLine(1, {u"brand"_s}, u"Чай"_s).bytes());
     }},
    {"kopecks-exact.dimes", "kopecks-exact", dimesAddUp},
    {"kopecks-exact.dearest", "kopecks-exact", dearestComesBack},
    {"date-has-no-zone.hour-that-is-skipped", "date-has-no-zone",
     [](Bench& bench) { dateIsKept(bench, u"2024-03-31 02:30:00"_s); }},
    {"date-has-no-zone.long-ago", "date-has-no-zone",
     [](Bench& bench) { dateIsKept(bench, u"2001-01-01 00:00:00"_s); }},
    {"date-has-no-zone.years-ahead", "date-has-no-zone",
     [](Bench& bench) { dateIsKept(bench, u"2090-12-31 23:59:59"_s); }},
    {"many-lines.precheck", "many-lines", thousandLines},
    {"many-lines.booked", "many-lines", thousandLinesBooked},
};

} // namespace

std::span<const Case> requestCases()
{
    return rows;
}

} // namespace till::verify
