// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/amount.h"
#include "simulator/documents/card.h"
#include "simulator/documents/messagetext.h"
#include "simulator/rules/cannedanswer.h"
#include "simulator/rules/faultrule.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace simulator {

/// A percentage for every goods line, with exceptions by goods code. Counted in hundredths of a
/// percent: 10000 is everything.
struct Percentage
{
    static constexpr int whole = 10'000;

    int general = 0;
    QHash<QString, int> bySku;

    [[nodiscard]] int of(const QString& sku) const { return bySku.value(sku, general); }
};

/// Everything that decides how the simulator answers; read once, never changed afterwards.
struct Rules
{
    QString user;
    QString password;
    QString apiKey;
    Percentage discount;     ///< of the line's total
    Kopecks roundDownTo = 0; ///< the check is rounded down to a multiple of it; 0: not at all
    Percentage earn;         ///< of the line's total less its discounts
    Percentage spend;        ///< the most that points may pay, of the same amount
    std::vector<Card> cards;
    std::vector<Message> messages;
    std::vector<FaultRule> faults;     ///< what goes wrong on purpose
    std::vector<CannedAnswer> answers; ///< finished ones, before all that the rules would answer
    QStringList answerFiles;           ///< those that answers were read from
    bool refusesUnmatched = false;     ///< a request that gets no finished answer is refused
    bool isStrict = false;             ///< a request that does not fit the schemas is refused
    QString certificateFile;           ///< PEM; empty without TLS
    QString keyFile;                   ///< PEM, of the certificate

    /// The card with that number, or null.
    [[nodiscard]] const Card* card(const QString& number) const
    {
        for (const Card& candidate : cards) {
            if (candidate.number == number) {
                return &candidate;
            }
        }
        return nullptr;
    }
};

} // namespace simulator
