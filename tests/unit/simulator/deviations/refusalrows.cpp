// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What is refused, and how.

#include "tests/unit/simulator/deviations/deviantserver.h"
#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

/// The status of a pre-check with these bytes.
Scene ofBytes(const QByteArray& body)
{
    return [body](DeviantServer& server) { return said(server.ask("precheck", body)); };
}

Scene of(const TextCheck& check)
{
    return ofBytes(document(check));
}

/// The status of a pre-check by somebody else, after one with the right credentials.
Scene bySomebodyElse(const QByteArray& body)
{
    return [body](DeviantServer& server) {
        server.precheck(saleOfTwo(u"first"_s));
        Request request = post("precheck", body);
        request.authorization = "Basic c29tZWJvZHk=";
        return said(server.ask(request));
    };
}

TextCheck unknownCard()
{
    TextCheck check = saleOfTwo(u"s"_s);
    check.card = u"2200000000099"_s;
    return check;
}

TextCheck notAddingUp()
{
    TextCheck check = saleOfTwo(u"s"_s);
    check.total = u"161.00"_s;
    return check;
}

TextCheck withOneId()
{
    TextCheck check = saleOfTwo(u"s"_s);
    check.lines[1].id = check.lines[0].id;
    return check;
}

TextCheck ofManyLines()
{
    TextCheck check = saleOfTwo(u"s"_s);
    for (int i = 3; i <= 600; ++i) {
        check.lines.push_back({QString::number(i), u"1000"_s, u"1.000"_s, u"0.00"_s});
    }
    return check;
}

} // namespace

std::vector<DeviationRow> refusalRows()
{
    const QByteArray sale = document(saleOfTwo(u"s"_s));
    QByteArray withMore = sale;
    withMore.replace("<cardNumber>", "<season>spring</season><cardNumber>");
    return {
        {"credentials-as-forbidden", bySomebodyElse(sale), u"401"_s, u"403"_s},
        {"login-page", bySomebodyElse(sale), u"401"_s, u"302"_s},
        {"any-password", bySomebodyElse(sale), u"401"_s, u"200"_s},
        {"body-before-credentials", bySomebodyElse("no XML"), u"401"_s, u"400"_s},
        {"malformed-as-own-fault", ofBytes("<RawCheck>"), u"400"_s, u"500"_s},
        {"unknown-card-not-found", of(unknownCard()), u"424"_s, u"404"_s},
        {"unknown-card-welcomed",
         [](DeviantServer& server) {
             const Answer answer = server.precheck(unknownCard());
             return said(answer) + u' ' +
                    valueAt(answer.body,
                            u"client/RawCheckClient/account/RawCheckAccount/balance"_s);
         },
         u"424 (no XML)"_s, u"200 0.00"_s},
        {"disagreement-as-own-fault", of(notAddingUp()), u"424"_s, u"500"_s},
        {"sums-unchecked",
         [](DeviantServer& server) {
             const Answer answer = server.precheck(notAddingUp());
             return said(answer) + u' ' +
                    valueAt(answer.body,
                            u"client/RawCheckClient/account/RawCheckAccount/balance"_s);
         },
         u"424 (no XML)"_s, u"200 500.00"_s},
        {"repeated-line-ids-taken", of(withOneId()), u"424"_s, u"200"_s},
        {"declaration-refused", ofBytes("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + sale),
         u"200"_s, u"400"_s},
        {"unknown-elements-refused", ofBytes(withMore), u"200"_s, u"400"_s},
        {"empty-check-refused", of({u"s"_s, u"2200000000017"_s, u"0.00"_s, {}}), u"200"_s,
         u"424"_s},
        {"many-lines-refused", of(ofManyLines()), u"200"_s, u"413"_s},
        {"old-dates-refused", ofBytes(sale), u"200"_s, u"424"_s},
    };
}

} // namespace simulator::test
