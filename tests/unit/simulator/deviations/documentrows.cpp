// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Numbers, lines and other fields in the answer to a pre-check.

#include "tests/unit/simulator/deviations/deviantserver.h"
#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

const QString balancePath = u"client/RawCheckClient/account/RawCheckAccount/balance"_s;
const QString lineAwards = u"items/RawItem[0]/awards/RawItemAwards/"_s;

/// What stands at a path of the answer to a sale of two lines.
Scene inAnswer(const QString& path)
{
    return [path](DeviantServer& server) {
        return u'<' + valueAt(server.precheck(saleOfTwo(u"s"_s)).body, path) + u'>';
    };
}

/// The same of a sale of one line that costs so much.
Scene inAnswerTo(const QString& total, const QString& path)
{
    return [total, path](DeviantServer& server) {
        const TextCheck check{
            u"s"_s, u"2200000000017"_s, total, {{u"1"_s, u"Хлеб"_s, u"1.250"_s, total}}};
        return valueAt(server.precheck(check).body, path);
    };
}

/// The identifiers of the lines that come back.
QString lineIds(DeviantServer& server)
{
    const QByteArray body = server.precheck(saleOfTwo(u"s"_s)).body;
    QStringList ids;
    for (int i = 0; i < 4; ++i) {
        ids.append(valueAt(body, u"items/RawItem[%1]/id"_s.arg(i)));
    }
    ids.removeAll(u"(none)"_s);
    return ids.join(u',');
}

} // namespace

std::vector<DeviationRow> documentRows()
{
    const Scene balance = inAnswer(balancePath);
    const Scene award = inAnswer(lineAwards + u"awardBonus"_s);
    return {
        {"comma-decimals", balance, u"<500.00>"_s, u"<500,00>"_s},
        {"grouped-thousands", inAnswerTo(u"1234567.80"_s, u"total"_s), u"1234567.80"_s,
         u"1 234 567.80"_s},
        {"plus-before-points", award, u"<4.75>"_s, u"<+4.75>"_s},
        {"exponent-notation", balance, u"<500.00>"_s, u"<5.000000e+02>"_s},
        {"four-decimals", award, u"<4.75>"_s, u"<4.7500>"_s},
        {"currency-behind-amounts", balance, u"<500.00>"_s, u"<500.00 RUB>"_s},
        {"balance-in-kopecks", balance, u"<500.00>"_s, u"<50000>"_s},
        {"amounts-as-floats", inAnswerTo(u"1234567.89"_s, u"total"_s), u"1234567.89"_s,
         u"1234567.88"_s},
        {"nothing-for-zero", inAnswer(lineAwards + u"discountOnChange"_s), u"<0.00>"_s, u"<>"_s},
        {"negative-discounts", inAnswer(lineAwards + u"discount"_s), u"<5.00>"_s, u"<-5.00>"_s},
        {"padded-line-ids", lineIds, u"1,2"_s, u" 1 , 2 "_s},
        {"named-line-ids", lineIds, u"1,2"_s, u"line-1,line-2"_s},
        {"line-ids-from-zero", lineIds, u"1,2"_s, u"0,1"_s},
        {"one-id-for-all-lines", lineIds, u"1,2"_s, u"1,1"_s},
        {"last-line-lost", lineIds, u"1,2"_s, u"1"_s},
        {"gift-line-added", lineIds, u"1,2"_s, u"1,2,9999"_s},
        {"check-id-padded", inAnswer(u"id"_s), u"<s>"_s, u"<s"_s + QString(63, u' ') + u'>'},
        {"check-id-replaced",
         [](DeviantServer& server) {
             const QString id = valueAt(server.precheck(saleOfTwo(u"s"_s)).body, u"id"_s);
             return id == u"s"_s ? u"the same"_s : u"another"_s;
         },
         u"the same"_s, u"another"_s},
        {"card-masked", inAnswer(u"cardNumber"_s), u"<2200000000017>"_s, u"<*0017>"_s},
        {"date-with-zone", inAnswer(u"date"_s), u"<2024-03-05 14:20:31>"_s,
         u"<2024-03-05T14:20:31+03:00>"_s},
        {"date-in-utc", inAnswer(u"date"_s), u"<2024-03-05 14:20:31>"_s,
         u"<2024-03-05 11:20:31>"_s},
        {"goods-codes-dropped", inAnswer(u"items/RawItem[1]/sku"_s), u"<1001>"_s, u"<(none)>"_s},
        {"quantities-cut", inAnswerTo(u"10.00"_s, u"items/RawItem/quantity"_s), u"1.250"_s, u"1"_s},
        {"letters-lost", inAnswerTo(u"10.00"_s, u"items/RawItem/sku"_s), u"Хлеб"_s, u"????"_s},
        {"total-after-discounts", inAnswer(u"total"_s), u"<160.00>"_s, u"<159.00>"_s},
    };
}

} // namespace simulator::test
