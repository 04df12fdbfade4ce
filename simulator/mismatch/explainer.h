// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/ledger/checkstore.h"
#include "simulator/ledger/ledger.h"
#include "simulator/mismatch/difference.h"
#include "simulator/rules/rules.h"

#include <QHash>

#include <memory>

namespace simulator {

/// Finds out what lets a request be refused, by the known document that it comes nearest to: the
/// last payment try of its check, an answer to its check or to another one, a booked sale, a card
/// of the rules. Refuses nothing itself.
///
/// Its operations throw poshost::DatabaseFailure. Used in the thread that made its database.
class Explainer
{
public:
    /// The database must outlive it.
    Explainer(std::shared_ptr<const Rules> followed, Database& database);

    /// Keeps a payment try that was taken, for the confirmation that should be the same.
    void noteTry(const Element& request);

    /// Why a request that fits its form is refused, in sentences without a dot at the end: the
    /// field that does not match, with the difference of money in kopecks, and those that do. Empty
    /// where nothing is found.
    QString causeOf(const QString& endpoint, const Element& request);

private:
    /// What was found out.
    struct Cause
    {
        Difference difference;
        QString closest; ///< what the request comes nearest to; empty for no other document
        Comparison comparison;
    };

    [[nodiscard]] std::optional<Cause> againstTry(const Element& request) const;
    [[nodiscard]] std::optional<Cause> againstAnswers(const Element& request) const;
    [[nodiscard]] std::optional<Cause> againstSale(const Element& request) const;
    [[nodiscard]] std::optional<Cause> againstCards(const Element& request) const;
    [[nodiscard]] QString saleFor(const Element& request) const;
    static QString sentence(const Cause& cause);

    const std::shared_ptr<const Rules> rules;
    CheckStore store;
    Ledger ledger;
    QHash<QString, QByteArray> tries; ///< by the check's identifier
};

} // namespace simulator
