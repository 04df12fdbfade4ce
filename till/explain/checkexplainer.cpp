// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/explain/checkexplainer.h"

#include "till/checks/check.h"
#include "till/checks/checkstore.h"
#include "till/explain/exchangefinder.h"
#include "till/explain/returnexplainer.h"
#include "till/explain/saleexplainer.h"
#include "till/failure.h"
#include "till/text.h"

namespace till {

Explanation CheckExplainer::explain(const Check& check) const
{
    return check.isReturn() ? explainReturn(check) : explainSale(check);
}

Exchange CheckExplainer::exchangeOf(const Check& check) const
{
    return ExchangeFinder(records, store, till).find(check);
}

Explanation CheckExplainer::explainSale(const Check& check) const
{
    // a check that went on without the loyalty system has nothing of any answer
    const Exchange exchange = check.confirmed ? exchangeOf(check) : Exchange();
    if (check.confirmed && exchange.answer.isEmpty()) {
        throw Failure(Text::tr("Nothing was recorded for check %1, and it keeps no answer itself; "
                               "name a folder in [recording] of %2 and later checks can be "
                               "explained.")
                          .arg(check.id(), config));
    }
    return SaleExplainer(check, exchange).explain();
}

Explanation CheckExplainer::explainReturn(const Check& check) const
{
    const auto [sale, earlier] = originOf(check);
    const Explanation ofSale = explainSale(sale);
    return ReturnExplainer(check, exchangeOf(check), sale, earlier, ofSale).explain();
}

/// What the shop knows counts before what this till knows alone, which other tills' returns are not
/// in.
CheckExplainer::Origin CheckExplainer::originOf(const Check& back) const
{
    const QString saleId = back.document->getSaleDocumentId();
    const bool isHere = store.hasClosed(saleId);
    try {
        if (const auto found = elsewhere ? elsewhere(back) : std::nullopt) {
            return *found;
        }
    } catch (const Failure&) {
        if (!isHere) {
            throw;
        }
    }
    Origin own{store.findSale(saleId), store.returnsOf(saleId)};
    own.earlier.removeIf(
        [&](const Check& other) { return other.returnsBefore >= back.returnsBefore; });
    return own;
}

} // namespace till
