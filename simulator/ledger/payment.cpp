// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/payment.h"

#include "simulator/documents/checkreader.h"
#include "simulator/documents/names.h"
#include "simulator/documents/rejection.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

Kopecks usedSum(const Element& item, QLatin1StringView name)
{
    Kopecks sum = 0;
    for (const Element& used : item.all({names::usedAwards, names::rawItemUsedAwards, name})) {
        sum = checkedSum(sum, readAmount(used.text(), name));
    }
    return sum;
}

} // namespace

Payment readPayment(const Element& confirmation)
{
    Payment payment;
    for (const Element& item : confirmation.all({names::items, names::rawItem})) {
        payment.lines.push_back(
            {usedSum(item, names::usedDiscount), usedSum(item, names::usedBonusInCurrency)});
    }
    const auto amounts = confirmation.all({names::payments, names::rawCheckPayment, names::amount});
    if (amounts.empty()) {
        throw Rejection(400,
                        u"%1/%2/%3 is missing: the confirmation says nothing of the payment"_s.arg(
                            names::payments, names::rawCheckPayment, names::amount));
    }
    for (const Element& amount : amounts) {
        payment.amount = checkedSum(payment.amount, readAmount(amount.text(), names::amount));
    }
    return payment;
}

} // namespace simulator
