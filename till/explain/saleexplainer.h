// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"
#include "till/explain/explanation.h"

namespace till {

/// Counts anew, from the answer alone, what must stand on a closed sale, and says where it does
/// not.
class SaleExplainer
{
public:
    SaleExplainer(const Check& sale, const Exchange& found);

    Explanation explain();

private:
    using What = ExplainedAmount::What;
    using Meaning = protocol::Meaning;

    void explainLine(const Line& line);
    void explainDiscount(const Line& line);
    void explainSpent(const Line& line);
    void explainEarned(const Line& line);
    void refuseOtherLines();
    void explainTotals();
    void explainEarnedBySystem();
    void explainPaid();

    ExplainedAmount amountOf(What what, qint64 kopecks, int position = 0) const;
    QList<AmountSource> inAnswer(Meaning meaning, int position = 0) const;
    QList<AmountSource> inConfirmation(Meaning meaning, int position = 0) const;
    /// Notes a problem when the confirmation says something else.
    void compareWithConfirmation(ExplainedAmount& amount, Meaning meaning) const;
    void compareImpacts(ExplainedAmount& amount, bool bonus) const;

    const Check& check;
    Explanation explanation;
    const protocol::Findings answer;
    const protocol::Findings confirmation;
};

} // namespace till
