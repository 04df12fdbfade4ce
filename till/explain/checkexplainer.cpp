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
    const Check sale = store.findSale(check.document->getSaleDocumentId());
    QList<Check> earlier = store.returnsOf(sale.id());
    earlier.removeIf(
        [&](const Check& other) { return other.returnsBefore >= check.returnsBefore; });
    const Explanation ofSale = explainSale(sale);
    return ReturnExplainer(check, exchangeOf(check), sale, earlier, ofSale).explain();
}

} // namespace till
