// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What sales and returns book, and which of them are taken.

#include "tests/unit/simulator/deviations/deviantserver.h"
#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

/// The balance after the sale, which begins with 500.00, spends 54.00 and earns 3.03 and 1.72.
QString afterSale(DeviantServer& server)
{
    const QString status = said(server.sell(u"sale"_s));
    return status + u' ' + server.balance();
}

/// The statuses of a sale with 0.11 points on the first line, and the balance.
QString afterElevenKopecks(DeviantServer& server)
{
    const QByteArray body =
        confirmation(server.precheck(saleOfTwo(u"sale"_s)).body,
                     {{u"1"_s, {u"5.00"_s, u"0.11"_s}}, {u"2"_s, {u"6.00"_s}}}, u"148.89"_s);
    return inOrder({server.confirm(body), server.balance()});
}

/// The statuses of a sale with what its first line used and what was paid.
Scene paid(const QStringList& first, const QString& amount)
{
    return [first, amount](DeviantServer& server) {
        return server.confirm(confirmation(server.precheck(saleOfTwo(u"sale"_s)).body,
                                           {{u"1"_s, first}, {u"2"_s, {u"6.00"_s}}}, amount));
    };
}

/// The statuses of a sale whose confirmation has something else than its answer.
Scene exchanged(const QByteArray& answered, const QByteArray& confirmed)
{
    return [answered, confirmed](DeviantServer& server) {
        return server.confirm(server.confirmationFor(u"sale"_s).replace(answered, confirmed));
    };
}

/// Two checks that spend 54.00 each, of a card that holds 75.50: the second one's statuses.
QString overdrawn(DeviantServer& server)
{
    std::vector<QByteArray> bodies;
    for (const char* id : {"a", "b"}) {
        TextCheck check = saleOfTwo(QString::fromLatin1(id));
        check.card = u"2200000000024"_s;
        bodies.push_back(confirmation(
            server.precheck(check).body,
            {{u"1"_s, {u"5.00"_s, u"47.00"_s}}, {u"2"_s, {u"6.00"_s, u"7.00"_s}}}, u"95.00"_s));
    }
    server.confirm(bodies[0]);
    return server.confirm(bodies[1]);
}

/// A return of one of three pieces after the sale: its statuses and the balance.
QString afterReturn(DeviantServer& server)
{
    server.sell(u"sale"_s);
    const QString statuses = server.giveBack(server.partOfFirst(u"r1"_s, u"33.33"_s, u"15.67"_s));
    return statuses + u' ' + server.balance();
}

/// All three pieces by themselves after a sale without points, whose first line earned 4.75.
QString afterThreeReturns(DeviantServer& server)
{
    const QByteArray body =
        confirmation(server.precheck(saleOfTwo(u"sale"_s)).body,
                     {{u"1"_s, {u"5.00"_s}}, {u"2"_s, {u"6.00"_s}}}, u"149.00"_s);
    QStringList said{server.confirm(body)};
    for (const QString& total : {u"33.33"_s, u"33.34"_s, u"33.33"_s}) {
        said.append(
            server.giveBack(server.partOfFirst(u"r%1"_s.arg(said.size()), total, u"0.00"_s)));
    }
    said.append(server.balance());
    return inOrder(said);
}

/// The statuses of a return that something is changed in.
Scene returned(const std::function<void(TextCheck&)>& change)
{
    return [change](DeviantServer& server) {
        server.sell(u"sale"_s);
        TextCheck check = server.partOfFirst(u"r1"_s, u"33.33"_s, u"15.67"_s);
        change(check);
        return server.giveBack(check);
    };
}

std::vector<DeviationRow> returnRows()
{
    const QString refused = u"424 424 424"_s;
    const QString taken = u"200 200 200"_s;
    return {
        {"return-of-unknown-sale-taken",
         returned([](TextCheck& check) { check.originalId = u"nobody's"_s; }), refused, taken},
        {"return-to-another-card-taken",
         returned([](TextCheck& check) { check.card = u"2200000000024"_s; }), refused, taken},
        {"over-return-taken",
         returned([](TextCheck& check) { check.lines[0].quantity = u"4.000"_s; }), refused, taken},
        {"return-points-unchecked",
         returned([](TextCheck& check) { check.lines[0].givenBack = u"20.00"_s; }), refused, taken},
        // 33.33 of 160.00: 11.25 of 54.00 and 0.99 of 4.75
        {"returns-by-share-of-sale", afterReturn, u"200 200 200 465.41"_s, u"200 200 200 461.01"_s},
        {"returns-give-nothing-back", afterReturn, u"200 200 200 465.41"_s,
         u"200 200 200 449.74"_s},
        {"returns-take-nothing-back", afterReturn, u"200 200 200 465.41"_s,
         u"200 200 200 466.42"_s},
        {"returns-rounded-each", afterThreeReturns,
         u"200 200 200 200 200 200 200 200 200 200 200 502.70"_s,
         u"200 200 200 200 200 200 200 200 200 200 200 502.71"_s},
    };
}

} // namespace

std::vector<DeviationRow> bookingRows()
{
    std::vector<DeviationRow> rows = {
        {"points-rounded-down", afterSale, u"200 450.75"_s, u"200 450.74"_s},
        {"points-unscaled", afterSale, u"200 450.75"_s, u"200 453.45"_s},
        {"points-rounded-in-one", afterElevenKopecks, u"200 200 507.34"_s, u"200 200 507.33"_s},
        {"points-spent-forgotten", afterSale, u"200 450.75"_s, u"200 504.75"_s},
        {"points-spent-as-allowed", afterSale, u"200 450.75"_s, u"200 430.25"_s},
        {"overdraft-refused", overdrawn, u"200 200"_s, u"424 424"_s},
        {"payment-unchecked", paid({u"5.00"_s}, u"148.00"_s), u"424 424"_s, u"200 200"_s},
        {"overspending-taken", paid({u"5.00"_s, u"50.00"_s}, u"99.00"_s), u"424 424"_s,
         u"200 200"_s},
        {"other-card-taken", exchanged("2200000000017", "2200000000024"), u"424 424"_s,
         u"200 200"_s},
        {"other-lines-taken", exchanged("<sku>1000<", "<sku>1005<"), u"424 424"_s, u"200 200"_s},
    };
    const std::vector<DeviationRow> returns = returnRows();
    rows.insert(rows.end(), returns.begin(), returns.end());
    return rows;
}

} // namespace simulator::test
