// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "protocol/findings.h"

#include <QList>
#include <QString>

#include <optional>

namespace till {

/// An element from which an amount comes.
struct AmountSource
{
    enum class Document
    {
        Answer,
        /// The confirmation that was queued when the check was closed.
        Confirmation,
        /// The answer to the sale that a return is of.
        SaleAnswer,
    };

    Document document = Document::Answer;
    protocol::Finding finding;
};

/// An amount on a closed check, or a message, with where it comes from.
struct ExplainedAmount
{
    enum class What
    {
        Discount,
        PointsSpent,
        PointsEarned,
        /// What the slip shows as the loyalty system's own count of the points earned.
        EarnedBySystem,
        PointsGivenBack,
        PointsTakenBack,
        Balance,
        Paid,
        MessageToCashier,
        MessageToCustomer,
    };

    What what = What::Discount;
    /// Position of the goods line; 0 for the whole check.
    int position = 0;
    /// What the check has; nothing for a message.
    std::optional<qint64> kopecks;
    /// The message.
    QString text;
    QList<AmountSource> sources;
    /// How the amount follows from the sources, where it is not their sum.
    QString rule;
    /// What does not agree, a sentence each; empty when the amount is explained.
    QStringList problems;
};

/// Where the documents come from that explain a check.
struct Exchange
{
    /// The answer to the last request before the check was closed; empty when there is none.
    QByteArray answer;
    /// Such as "record 3, exchange 2 of 2026-03-05 14:20:31".
    QString answerOrigin;
    /// Whether the answer is recorded byte for byte, so that its lines are the server's.
    bool recorded = false;
    /// What does not agree about the answer itself; empty when nothing.
    QString problem;
    /// Empty when it is gone.
    QByteArray confirmation;
    QString confirmationOrigin;
};

/// A closed check explained.
struct Explanation
{
    Exchange exchange;
    QList<ExplainedAmount> amounts;
    /// What keeps the whole from being explained.
    QStringList problems;

    qsizetype disagreements() const
    {
        qsizetype count = problems.size();
        for (const ExplainedAmount& amount : amounts) {
            count += amount.problems.isEmpty() ? 0 : 1;
        }
        return count;
    }
};

} // namespace till
