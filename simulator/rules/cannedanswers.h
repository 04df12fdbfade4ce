// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"
#include "simulator/rules/cannedanswer.h"

#include <mutex>
#include <optional>
#include <vector>

namespace simulator {

/// Decides which request gets which finished answer. Every answer counts the requests that it
/// matches, whatever the others do with them; the first that is due wins. All operations may be
/// called from several threads at once.
class CannedAnswers
{
public:
    explicit CannedAnswers(const std::vector<CannedAnswer>& answers);

    /// Counts the request and says what it gets; nothing when no answer is due.
    /// whyNone: set then to one sentence that goes through the answers.
    std::optional<Answer> take(const QString& endpoint, const QString& card, QString& whyNone);

    /// The answer that comes nearest to being for a request that got none, with what matches and
    /// what does not, as one sentence that begins with the latter; empty where there is none at
    /// all.
    [[nodiscard]] QString closest(const QString& endpoint, const QString& card) const;

private:
    struct Row
    {
        CannedAnswer answer;
        int matched = 0;
        int given = 0;
    };

    static QString objection(const Row& row, const QString& endpoint, const QString& card);

    mutable std::mutex mutex; // guards what follows
    std::vector<Row> rows;
};

} // namespace simulator
