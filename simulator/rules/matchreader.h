// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/endpoints.h"
#include "simulator/rules/requestmatch.h"
#include "simulator/rules/tablereader.h"
#include "simulator/status.h"

namespace simulator {

/// The keys that readMatch reads.
inline QStringList matchKeys()
{
    return {QStringLiteral("endpoint"), QStringLiteral("card"), QStringLiteral("request"),
            QStringLiteral("times")};
}

/// Reads which requests a fault or an answer is for. One that names a single request is for that
/// one alone unless it says otherwise.
inline void readMatch(const TableReader& table, RequestMatch& rule)
{
    const QStringList keys = table.keys();
    if (keys.contains(QStringLiteral("endpoint"))) {
        rule.endpoint = table.choice("endpoint", endpoints::all());
    }
    rule.card = table.text("card");
    rule.firstRequest = static_cast<int>(table.integer("request", 1, 1, RequestMatch::always));
    const int usualTimes = keys.contains(QStringLiteral("request")) ? 1 : RequestMatch::always;
    rule.times = static_cast<int>(table.integer("times", usualTimes, 1, RequestMatch::always));
}

/// Reads the status of an answer, 200 to 599.
inline int readStatus(const TableReader& table, int usual)
{
    return static_cast<int>(table.integer("status", usual, status::first, status::last));
}

} // namespace simulator
