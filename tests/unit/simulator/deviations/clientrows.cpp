// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The card and what is granted in the answer to a pre-check.

#include "tests/unit/simulator/deviations/deviantserver.h"
#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

const QString heldPath = u"client/RawCheckClient/account/RawCheckAccount/balance"_s;
const QString awardsOfCheck = u"awards/RawCheckAwards/"_s;
const QString awardsOfFirst = u"items/RawItem[0]/awards/RawItemAwards/"_s;

QString held(DeviantServer& server, const QString& id, const QString& card = u"2200000000017"_s)
{
    TextCheck check = saleOfTwo(id);
    check.card = card;
    return valueAt(server.precheck(check).body, heldPath);
}

Scene granted(const QString& path, const QString& card = u"2200000000017"_s)
{
    return [path, card](DeviantServer& server) {
        TextCheck check = saleOfTwo(u"s"_s);
        check.card = card;
        return valueAt(server.precheck(check).body, path);
    };
}

/// The balance at the first and at the second pre-check.
QString twice(DeviantServer& server)
{
    const QString first = held(server, u"a"_s);
    return first + u' ' + held(server, u"b"_s);
}

/// The balance before and after a sale that spends 54.00 and earns 4.75.
QString beforeAndAfter(DeviantServer& server)
{
    const QString before = held(server, u"a"_s);
    server.sell(u"s"_s);
    return before + u' ' + held(server, u"b"_s);
}

} // namespace

std::vector<DeviationRow> clientRows()
{
    const Scene balance = granted(heldPath);
    return {
        {"balance-missing-for-new-cards", twice, u"500.00 500.00"_s, u"(none) 500.00"_s},
        {"balance-missing-for-zero", granted(heldPath, u"2200000000031"_s), u"0.00"_s, u"(none)"_s},
        {"balance-null", balance, u"500.00"_s, u"null"_s},
        {"client-missing", granted(u"client"_s), u"АннаСоколова500.00"_s, u"(none)"_s},
        {"balance-of-yesterday", beforeAndAfter, u"500.00 450.75"_s, u"500.00 500.00"_s},
        {"balance-anticipated", balance, u"500.00"_s, u"507.45"_s},
        {"points-reserved", twice, u"500.00 500.00"_s, u"500.00 499.00"_s},
        {"discount-below-least-total", granted(awardsOfFirst + u"discount"_s), u"5.00"_s,
         u"101.00"_s},
        {"points-for-all-of-a-line", granted(awardsOfFirst + u"allowBonusInCurrency"_s), u"47.50"_s,
         u"100.00"_s},
        {"awards-hundredfold", granted(awardsOfFirst + u"awardBonus"_s), u"4.75"_s, u"475.00"_s},
        {"allowance-above-balance", granted(awardsOfCheck + u"allowBonus"_s, u"2200000000031"_s),
         u"0.00"_s, u"74.50"_s},
        {"award-in-whole-roubles", granted(awardsOfCheck + u"awardBonus"_s), u"7.45"_s, u"7.00"_s},
        {"channels-in-capitals", granted(u"informing/RawCheckInforming/communicationChannel"_s),
         u"pos"_s, u"POS"_s},
        {"names-capitalised", granted(u"client/RawCheckClient/surname"_s), u"Соколова"_s,
         u"(none)"_s},
        {"returns-earn",
         [](DeviantServer& server) {
             server.sell(u"sale"_s);
             const Answer answer =
                 server.precheck(server.partOfFirst(u"r"_s, u"33.33"_s, u"15.67"_s));
             return valueAt(answer.body, awardsOfCheck + u"awardBonus"_s);
         },
         u"-1.01"_s, u"1.01"_s},
    };
}

} // namespace simulator::test
