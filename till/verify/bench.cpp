// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/bench.h"

#include "till/checks/amount.h"
#include "till/failure.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till::verify {

namespace names = protocol::names;

namespace {

/// What a card holds when nothing has happened since it was @p last asked for; that where the
/// server does not answer now.
qint64 askedAgain(Bench& bench, const QString& card, qint64 last)
{
    try {
        return bench.balance(card);
    } catch (const NotTried&) {
        return last;
    }
}

} // namespace

Bench::Bench(Counter& cashDesk, const Wire& line, const Stock& given)
    : desk(cashDesk), cable(line), stock(given)
{}

Line Bench::lineOf(int position, qint64 priceKopecks, qint64 thousandths, bool fractional) const
{
    Line line;
    line.position = position;
    line.code = stock.codes.at((position - 1) % stock.codes.size());
    line.name = line.code;
    line.fractional = fractional;
    line.priceKopecks = priceKopecks;
    line.thousandths = thousandths;
    line.sumKopecks = amount::lineSum(priceKopecks, thousandths);
    return line;
}

Basket Bench::basket(const PointsChoice& points) const
{
    return {
        stock.card,
        {lineOf(1, 14990, 2000, false), lineOf(2, 8990, 765, true), lineOf(3, 750, 1000, false)},
        points};
}

Basket Bench::pieces(int count, qint64 priceKopecks, const PointsChoice& points) const
{
    return {stock.card, {lineOf(1, priceKopecks, qint64(count) * 1000, false)}, points};
}

void Bench::note(const Exchange& exchange)
{
    last = exchange;
    exchanges.append(exchange);
    if (exchange.url == ways().confirm && exchange.reply.status == 200) {
        for (OpenSale& sale : sales) {
            sale.certain |= exchange.request.contains(sale.papers.check.id().toUtf8());
        }
        for (const Papers& back : returns) {
            if (back.confirmation == exchange.request) {
                desk.settle(back);
            }
        }
        returns.removeIf([&](const Papers& back) { return back.confirmation == exchange.request; });
    }
}

Outgoing Bench::outgoing(const QUrl& url, const QByteArray& body) const
{
    Outgoing request;
    request.url = url;
    request.body = body;
    request.headers = desk.ways().headers;
    return request;
}

Reply Bench::send(const Outgoing& request)
{
    Reply reply = cable.send(request);
    if (request.pauseMilliseconds > 0) {
        reply.milliseconds = 0; // the time was this side's
    }
    note({request.url, request.body, reply});
    return reply;
}

QList<Reply> Bench::sendTogether(const QList<Outgoing>& requests)
{
    const QList<Reply> replies = cable.sendTogether(requests);
    for (qsizetype i = 0; i < replies.size(); ++i) {
        note({requests.at(i).url, requests.at(i).body, replies.at(i)});
    }
    return replies;
}

QList<Reply> Bench::sendKept(const QList<Outgoing>& requests)
{
    const QList<Reply> replies = cable.sendKept(requests);
    for (qsizetype i = 0; i < replies.size(); ++i) {
        note({requests.at(i).url, requests.at(i).body, replies.at(i)});
    }
    return replies;
}

Papers Bench::sold(const Basket& wanted)
{
    const auto listen = [this] {
        for (const Exchange& exchange : desk.takeExchanges()) {
            note(exchange);
        }
    };
    try {
        const Papers papers = desk.sell(wanted);
        listen();
        if (!papers.isConfirmed()) {
            cannot(Text::tr("the till sells without the loyalty system: %1").arg(papers.refusal));
        }
        return papers;
    } catch (const Failure& failure) {
        listen();
        cannot(failure.text());
    }
}

Papers Bench::soldWithPoints(const Basket& wanted)
{
    const Papers papers = sold(wanted);
    if (Booking::of(papers.confirmation).spent <= 0) {
        cannot(Text::tr("the server lets this card spend no points; give it some"));
    }
    return papers;
}

Papers Bench::booked(const Basket& wanted)
{
    return booked(sold(wanted));
}

Papers Bench::booked(const Papers& papers)
{
    for (const QUrl& url : {ways().paymentTry, ways().confirm}) {
        mayBeBooked(papers);
        const Reply reply = sent(url, papers.confirmation);
        if (reply.status != 200) {
            cannot(Text::tr("the server does not take a check: %1 to %2")
                       .arg(reply.shown(), url.fileName()));
        }
    }
    return papers;
}

void Bench::mayBeBooked(const Papers& papers)
{
    if (openSale(papers.check.id()) == nullptr) {
        desk.settle(papers);
        sales.append({papers, {}, false});
    }
}

Bench::OpenSale* Bench::openSale(const QString& id)
{
    for (OpenSale& sale : sales) {
        if (sale.papers.check.id() == id) {
            return &sale;
        }
    }
    return nullptr;
}

Papers Bench::takenBack(const Papers& sale, const QHash<int, qint64>& thousandths)
{
    try {
        const Papers papers = desk.takeBack(sale.check.id(), thousandths);
        for (const Exchange& exchange : desk.takeExchanges()) {
            note(exchange);
        }
        if (!papers.isConfirmed()) {
            cannot(Text::tr("the till returns without the loyalty system"));
        }
        returns.append(papers);
        if (OpenSale* const open = openSale(sale.check.id())) {
            for (auto it = thousandths.cbegin(); it != thousandths.cend(); ++it) {
                open->returned[it.key()] += it.value();
            }
        }
        return papers;
    } catch (const Failure& failure) {
        cannot(failure.text());
    }
}

Papers Bench::returned(const Papers& sale, const QHash<int, qint64>& thousandths)
{
    const Papers papers = takenBack(sale, thousandths);
    for (const QUrl& url : {ways().precheck, ways().paymentTry, ways().confirm}) {
        const Reply reply = sent(url, papers.confirmation);
        if (reply.status != 200) {
            cannot(Text::tr("the server does not take a return: %1 to %2")
                       .arg(reply.shown(), url.fileName()));
        }
    }
    return papers;
}

Draft Bench::freshRequest()
{
    if (pattern.isEmpty()) {
        try {
            pattern = desk.sell(basket()).precheck.request;
        } catch (const Failure& failure) {
            cannot(failure.text());
        }
        for (const Exchange& exchange : desk.takeExchanges()) {
            note(exchange);
            pattern = exchange.request;
        }
        if (pattern.isEmpty()) {
            cannot(Text::tr("the plug-in asks the server nothing"));
        }
    }
    Draft draft(pattern);
    draft.makeNew();
    return draft;
}

Reading Bench::answered(const QByteArray& request)
{
    const Reply reply = precheck(request);
    if (reply.status != 200) {
        cannot(Text::tr("the server does not answer a pre-check: %1").arg(reply.shown()));
    }
    Reading reading(reply.body);
    if (!reading.problem().isEmpty()) {
        cannot(Text::tr("the server's answer is no XML: %1").arg(reading.problem()));
    }
    return reading;
}

qint64 Bench::balance(const QString& wanted)
{
    const Reading reading = answered(freshRequest().set({names::cardNumber}, wanted).bytes());
    const std::optional<qint64> kopecks = reading.balance();
    if (!kopecks) {
        cannot(Text::tr("the server does not say what the card holds"));
    }
    return *kopecks;
}

void Bench::expectStatus(const Reply& reply, const QList<int>& wanted)
{
    QStringList texts;
    for (const int status : wanted) {
        texts.append(QString::number(status));
    }
    expectThat(wanted.contains(reply.status), {}, texts.join(u" / "_s), reply.shown());
}

void Bench::expectRefusal(const Reply& reply, int wanted)
{
    const QString id = Reading(last.request).text({names::id});
    const Reading said(reply.body);
    if (reply.status == 200 && !id.isEmpty() && !said.rootName().isEmpty() &&
        said.text({names::id}) != id) {
        throw Broken{{u"status-tells"_s, last, {}, QString::number(wanted), reply.shown()}};
    }
    expectStatus(reply, {wanted});
}

void Bench::expectAmount(const QString& path, qint64 expected, std::optional<qint64> got)
{
    expectThat(got == expected, path, amount::moneyText(expected),
               got ? amount::moneyText(*got) : Text::tr("no amount"));
}

void Bench::expectText(const QString& path, const QString& expected, const QString& got)
{
    expectThat(got == expected, path, u'"' + expected + u'"', u'"' + got + u'"');
}

void Bench::expectThat(bool holds, const QString& path, const QString& expected, const QString& got)
{
    if (!holds) {
        throw Broken{{{}, last, path, expected, got}};
    }
}

void Bench::expectBalance(const QString& wanted, qint64 before, qint64 change)
{
    const Exchange about = last;
    const qint64 now = balance(wanted);
    const QString path = u"/RawCheck/"_s + Reading::balancePath().join(u'/');
    if (now == before + change) {
        return;
    }
    const qint64 again = askedAgain(*this, wanted, now);
    if (again != now) {
        throw Broken{{u"precheck-books-nothing"_s, last, path, amount::moneyText(now),
                      amount::moneyText(again)}};
    }
    throw Broken{{{},
                  about,
                  path,
                  Text::tr("%1, after %2 before")
                      .arg(amount::moneyText(before + change), amount::moneyText(before)),
                  amount::moneyText(now)}};
}

/// @return whether nothing of the sale is left in the server's books
bool Bench::takeBackRest(const OpenSale& sale)
{
    QHash<int, qint64> rest;
    for (const Line& line : sale.papers.check.lines) {
        const qint64 remains = line.thousandths - sale.returned.value(line.position);
        if (remains > 0) {
            rest.insert(line.position, remains);
        }
    }
    try {
        return rest.isEmpty() || desk.deliver(desk.takeBack(sale.papers.check.id(), rest));
    } catch (const std::exception&) {
        return false; // the till itself does not take it back
    }
}

QStringList Bench::cleanUp()
{
    QStringList left;
    for (const Papers& back : std::exchange(returns, {})) {
        if (!desk.deliver(back)) {
            left.append(back.check.document->getSaleDocumentId());
        }
    }
    for (const OpenSale& sale : std::exchange(sales, {})) {
        if (!takeBackRest(sale) && sale.certain) {
            left.append(sale.papers.check.id());
        }
    }
    exchanges += desk.takeExchanges();
    left.removeDuplicates();
    return left;
}

} // namespace till::verify
