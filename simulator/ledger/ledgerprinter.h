// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/ledger/ledger.h"
#include "simulator/rules/rules.h"

#include <QJsonObject>

namespace simulator {

/// The books as a reader sees them: every card that was seen and every card of the rules, and every
/// confirmed check in the order of their times, as the tills have sent them.
struct LedgerView
{
    struct CardRow
    {
        Account account;
        QString owner; ///< empty when the rules do not know the card
    };

    std::vector<CardRow> cards;
    std::vector<Booking> checks;

    /// The first card whose balance is not what its other figures give; empty when all agree.
    [[nodiscard]] QString wrongCard() const;
};

/// Every card that was seen and every card of the rules, in the order of their numbers. Throws
/// poshost::DatabaseFailure.
std::vector<LedgerView::CardRow> readCards(Database& database, const Rules& rules);

/// Reads the books. Throws DatabaseError.
LedgerView readLedger(Database& database, const Rules& rules);

/// Two aligned tables, amounts with two decimals, cards by their last four digits.
/// @param width how many characters fit on a line
QString ledgerTables(const LedgerView& view, int width);

/// The checks in the order of their times and identifiers as
/// "check,card,earned,spent,givenBack,takenBack" with a heading line, amounts with two decimals, so
/// that a till's books can be compared line by line.
QString ledgerCsv(const LedgerView& view);

/// A card with its figures, and a check with its: amounts are texts with two decimals, card numbers
/// whole.
QJsonObject cardJson(const LedgerView::CardRow& row);
QJsonObject checkJson(const Booking& check);

/// Everything as JSON, cards by their last four digits; amounts are texts with two decimals, as in
/// the JSON of a till.
QByteArray ledgerJson(const LedgerView& view);

} // namespace simulator
