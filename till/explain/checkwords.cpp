// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/explain/checkwords.h"

#include "host/document/money.h"
#include "till/checks/amount.h"
#include "till/text.h"

#include <algorithm>
#include <cstdlib>

namespace till {
namespace {

using amount::moneyText;
using protocol::Finding;
using protocol::Meaning;

void explainChannel(ExplainedAmount::What what, const QStringList& texts, QList<Finding> left,
                    Explanation& explanation)
{
    for (const QString& text : texts) {
        ExplainedAmount message;
        message.what = what;
        message.text = text;
        const auto same = std::find_if(left.cbegin(), left.cend(), [&](const Finding& finding) {
            return finding.text == text;
        });
        if (same == left.cend()) {
            message.problems.append(Text::tr("the answer has no such message"));
        } else {
            message.sources.append({AmountSource::Document::Answer, *same});
            left.erase(same);
        }
        explanation.amounts.append(message);
    }
    for (const Finding& finding : std::as_const(left)) {
        explanation.problems.append(Text::tr("the message \"%1\" (%2, line %3) is not on the check")
                                        .arg(finding.text, finding.path)
                                        .arg(finding.line));
    }
}

} // namespace

void checkwords::require(ExplainedAmount& amount, qint64 expected, const QString& says)
{
    const qint64 present = amount.kopecks.value_or(0);
    if (present == expected) {
        return;
    }
    const QString pattern = present > expected ? Text::tr("%1 %2, the check has %3: %4 too much")
                                               : Text::tr("%1 %2, the check has %3: %4 too little");
    amount.problems.append(pattern.arg(says, moneyText(expected), moneyText(present),
                                       moneyText(std::abs(present - expected))));
}

void checkwords::explainBalance(const Check& check, const protocol::Findings& answer,
                                Explanation& explanation)
{
    const auto record = check.cardRecord();
    if (record.isNull() || record->getBonusBalance().isNull()) {
        return;
    }
    ExplainedAmount amount;
    amount.what = ExplainedAmount::What::Balance;
    amount.kopecks = money::toKopecks(record->getBonusBalance().toDouble()).value_or(0);
    const QList<Finding> findings = answer.of(Meaning::Balance);
    for (const Finding& finding : findings) {
        amount.sources.append({AmountSource::Document::Answer, finding});
    }
    require(amount, protocol::Findings::sum(findings), Text::tr("the answer says"));
    explanation.amounts.append(amount);
}

void checkwords::explainMessages(const Check& check, const protocol::Findings& answer,
                                 Explanation& explanation)
{
    using What = ExplainedAmount::What;
    explainChannel(What::MessageToCashier, check.cashierMessages,
                   answer.of(Meaning::MessageToCashier), explanation);
    explainChannel(What::MessageToCustomer, check.clientMessages,
                   answer.of(Meaning::MessageToCustomer), explanation);
}

} // namespace till
