// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/element.h"
#include "simulator/ledger/database.h"

#include <optional>
#include <vector>

namespace simulator {

/// The checks that are on their way: what was answered to their pre-checks and which payment was
/// tried. Every operation throws
/// poshost::DatabaseFailure. Writers are called inside a transaction.
class CheckStore
{
public:
    explicit CheckStore(Database& database) : db(database) {}

    /// Keeps an answer as the last one given to the check.
    void rememberAnswer(const QString& checkId, const Element& answer);

    /// The answer that counts for a confirmation: the one that it was built from when the check
    /// was given that answer at any time, otherwise the last one given. An earlier answer counts
    /// because the reply to a later pre-check may have been lost on its way to the till.
    /// Nothing when the check was never pre-checked.
    [[nodiscard]] std::optional<Document> answerFor(const QString& checkId,
                                                    const Element& confirmation) const;

    /// The different answers given to checks that are not booked, the last one first: to this
    /// check, or the last ones given to any.
    [[nodiscard]] std::vector<Document> answersTo(const QString& checkId) const;
    [[nodiscard]] std::vector<Document> lastAnswers() const;

    /// Keeps a payment try; it replaces the check's earlier one.
    void rememberTry(const QString& checkId, const Element& confirmation);

    /// Whether the check's last payment try was the same document; nothing when there was none.
    [[nodiscard]] std::optional<bool> isSameTry(const QString& checkId,
                                                const Element& confirmation) const;

    /// Forgets the answers given to a check that is booked now.
    void forgetAnswers(const QString& checkId);

private:
    Database& db;
};

} // namespace simulator
