// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Steps, repeats and what a confirmation is held against.

#include "tests/unit/simulator/deviations/deviantserver.h"
#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

/// A sale of one line that costs so much.
TextCheck saleFor(const QString& id, const QString& total)
{
    return {id, u"2200000000017"_s, total, {{u"1"_s, u"1000"_s, u"1.000"_s, total}}};
}

/// The statuses of two pre-checks, and the total that the second one is answered.
Scene precheckedTwice(const QString& secondTotal)
{
    return [secondTotal](DeviantServer& server) {
        const QString first = said(server.precheck(saleFor(u"s"_s, u"100.00"_s)));
        const Answer second = server.precheck(saleFor(u"s"_s, secondTotal));
        return inOrder({first, said(second), valueAt(second.body, u"total"_s)});
    };
}

/// The confirmation of the sale of two lines with fewer points.
QByteArray withFewerPoints(DeviantServer& server, const QString& id)
{
    return confirmation(server.precheck(saleOfTwo(id)).body,
                        {{u"1"_s, {u"5.00"_s, u"40.00"_s}}, {u"2"_s, {u"6.00"_s}}}, u"109.00"_s);
}

/// The statuses of a payment try and of another one.
QString triedTwice(DeviantServer& server, const QByteArray& first, const QByteArray& second)
{
    return inOrder({said(server.ask("paymenttry", first)), said(server.ask("paymenttry", second))});
}

QString sameTryTwice(DeviantServer& server)
{
    const QByteArray body = server.confirmationFor(u"s"_s);
    return triedTwice(server, body, body);
}

QString otherTry(DeviantServer& server)
{
    const QByteArray body = server.confirmationFor(u"s"_s);
    return triedTwice(server, body, withFewerPoints(server, u"s"_s));
}

/// A payment try whose sum is wrong.
QByteArray withWrongSum(DeviantServer& server)
{
    return confirmation(server.precheck(saleOfTwo(u"s"_s)).body,
                        {{u"1"_s, {u"5.00"_s}}, {u"2"_s, {u"6.00"_s}}}, u"148.00"_s);
}

/// A confirmation of an answer that was followed by another pre-check.
QString confirmedEarlier(DeviantServer& server)
{
    const Answer first = server.precheck(saleFor(u"s"_s, u"100.00"_s));
    server.precheck(saleFor(u"s"_s, u"200.00"_s));
    return server.confirm(confirmation(first.body, {{u"1"_s, {u"5.00"_s}}}, u"95.00"_s));
}

/// A confirmation after a pre-check of another check of the card.
QString confirmedAfterAnother(DeviantServer& server)
{
    const QByteArray body = server.confirmationFor(u"a"_s);
    server.precheck(saleOfTwo(u"b"_s));
    return server.confirm(body);
}

QString confirmedAfterRefusedTry(DeviantServer& server)
{
    const QByteArray body = server.confirmationFor(u"s"_s);
    const QByteArray wrong = withWrongSum(server);
    return inOrder({triedTwice(server, body, wrong), said(server.ask("checkconfirm", body))});
}

/// A confirmation twice, the second time over that connection: its status and the bookings.
Scene repeatedOver(quint64 connection)
{
    return [connection](DeviantServer& server) {
        const QByteArray body = server.confirmationFor(u"s"_s);
        Request request = post("checkconfirm", body);
        request.connection = 1;
        server.ask("paymenttry", body);
        server.ask(request);
        request.connection = connection;
        return inOrder(
            {said(server.ask(request)), u"booked"_s, server.bookings(), server.balance()});
    };
}

QString confirmedTwice(DeviantServer& server)
{
    const QByteArray body = server.confirmationFor(u"s"_s);
    return inOrder({server.confirm(body), said(server.ask("checkconfirm", body)), u"booked"_s,
                    server.bookings()});
}

} // namespace

std::vector<DeviationRow> orderRows()
{
    return {
        {"changed-precheck-409", precheckedTwice(u"120.00"_s), u"200 200 120.00"_s,
         u"200 409 (no XML)"_s},
        {"repeated-precheck-409", precheckedTwice(u"100.00"_s), u"200 200 100.00"_s,
         u"200 409 (no XML)"_s},
        {"precheck-cached", precheckedTwice(u"120.00"_s), u"200 200 120.00"_s, u"200 200 100.00"_s},
        {"repeated-try-409", sameTryTwice, u"200 200"_s, u"200 409"_s},
        {"changed-try-409", otherTry, u"200 200"_s, u"200 409"_s},
        {"try-books",
         [](DeviantServer& server) {
             const QByteArray body = server.confirmationFor(u"s"_s);
             server.ask("paymenttry", body);
             const QString tried = server.bookings();
             return inOrder({tried, said(server.ask("checkconfirm", body)), server.bookings()});
         },
         u"0 200 1"_s, u"1 200 1"_s},
        {"try-unjudged", [](DeviantServer& server) { return server.confirm(withWrongSum(server)); },
         u"424 424"_s, u"200 424"_s},
        {"confirmation-without-try",
         [](DeviantServer& server) {
             return inOrder({said(server.ask("checkconfirm", server.confirmationFor(u"s"_s))),
                             server.bookings()});
         },
         u"424 0"_s, u"200 1"_s},
        {"changed-confirmation-taken",
         [](DeviantServer& server) {
             server.ask("paymenttry", server.confirmationFor(u"s"_s));
             return inOrder({said(server.ask("checkconfirm", withFewerPoints(server, u"s"_s))),
                             server.balance()});
         },
         u"424 500.00"_s, u"200 465.45"_s},
        {"compared-by-bytes",
         [](DeviantServer& server) {
             const QByteArray body = server.confirmationFor(u"s"_s);
             return inOrder({said(server.ask("paymenttry", body)),
                             said(server.ask("checkconfirm", body + "\n\n"))});
         },
         u"200 200"_s, u"200 424"_s},
        {"last-answer-only", confirmedEarlier, u"200 200"_s, u"424 424"_s},
        {"last-check-only", confirmedAfterAnother, u"200 200"_s, u"424 424"_s},
        {"refused-try-counts", confirmedAfterRefusedTry, u"200 424 200"_s, u"200 424 424"_s},
        {"repeats-known-by-connection", repeatedOver(2), u"409 booked 1 450.75"_s,
         u"200 booked 2 401.50"_s},
        {"repeats-known-by-connection", repeatedOver(1), u"409 booked 1 450.75"_s,
         u"409 booked 1 450.75"_s},
        {"fails-after-booking", confirmedTwice, u"200 200 409 booked 1"_s,
         u"200 500 409 booked 1"_s},
        {"booked-precheck-answered",
         [](DeviantServer& server) {
             server.sell(u"s"_s);
             return said(server.precheck(saleOfTwo(u"s"_s)));
         },
         u"409"_s, u"200"_s},
        {"repeat-not-found", confirmedTwice, u"200 200 409 booked 1"_s, u"200 200 404 booked 1"_s},
    };
}

} // namespace simulator::test
