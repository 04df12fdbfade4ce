// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"
#include "till/explain/explanation.h"

namespace till {

/// Counts anew what must stand on a closed return: shares of its sale, as far as they were not
/// given back before. Its amounts come from the answer to the sale.
class ReturnExplainer
{
public:
    /// @param earlier the returns of the sale that were closed before
    /// @param saleExplanation that of the sale
    ReturnExplainer(const Check& back, const Exchange& found, const Check& soldCheck,
                    const QList<Check>& earlier, const Explanation& saleExplanation);

    Explanation explain();

private:
    using What = ExplainedAmount::What;

    void explainLine(const Line& line, const Line& expected);
    void explainShare(What what, What ofSale, const Line& line, qint64 kopecks, qint64 expected);
    void compareWithAnswer(ExplainedAmount& amount) const;
    void compareWithConfirmation(ExplainedAmount& amount) const;
    void explainTotals();

    const Check& check;
    const Check& sale;
    const QList<Check>& before;
    const Explanation& ofSaleExplained;
    Explanation explanation;
    const protocol::Findings answer;
    const protocol::Findings confirmation;
};

} // namespace till
