// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {

void ServiceFixture::sell(const QString& id)
{
    const Answer answer = precheck(document(saleOfTwo(id)));
    ASSERT_EQ(answer.status, 200) << answer.reason.toStdString();
    const QByteArray body = confirmation(
        answer.body, {{u"1"_s, {u"5.00"_s, u"47.00"_s}}, {u"2"_s, {u"6.00"_s, u"7.00"_s}}},
        u"95.00"_s);
    const Answer tried = paymentTry(body);
    ASSERT_EQ(tried.status, 200) << tried.reason.toStdString();
    const Answer confirmed = confirm(body);
    ASSERT_EQ(confirmed.status, 200) << confirmed.reason.toStdString();
}

Account ServiceFixture::account(const QString& card) const
{
    for (const LedgerView::CardRow& row : ledger().cards) {
        if (row.account.card == card) {
            return row.account;
        }
    }
    ADD_FAILURE() << "no card " << card.toStdString();
    return {};
}

TextCheck saleOfTwo(const QString& id)
{
    return {id,
            u"2200000000017"_s,
            u"160.00"_s,
            {{u"1"_s, u"1000"_s, u"3.000"_s, u"100.00"_s},
             {u"2"_s, u"1001"_s, u"1.000"_s, u"60.00"_s}}};
}

} // namespace simulator::test
