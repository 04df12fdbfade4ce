// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/shop.h"

#include <QJsonArray>

/// A shop whose till records what it says to the loyalty system.
class RecordedShop : public Shop
{
protected:
    void SetUp() override;

    /// Appends a table to orva.toml.
    void configure(const QString& table) const;
    /// The sample sale with all points, by "sell".
    void sellWithPoints() const;

    /// What "log list --json" prints.
    QJsonArray listed() const;
    /// Replays and returns exit code and output; nothing but the plug-in is there.
    RunResult replay(const QString& what, const QStringList& more = {}) const;
    /// The names in the till's folder, deep.
    QStringList files() const;
    QString recordFile(int number) const;
};
