// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/program.h"

#include <QString>

#include <atomic>
#include <memory>
#include <random>

/// A cashier at one of many tills: sells and takes back, on a thread of its own, and now and then
/// the till's process is killed in the middle of it. What the till has said is done is counted.
class TillHand
{
public:
    /// @param tillFolder with orva.toml, sale1.toml and so on, and return.toml
    /// @param sales how many such files there are
    TillHand(const QString& tillFolder, int sales, quint64 seed)
        : folder(tillFolder), saleFiles(sales), random(seed)
    {}

    /// Works until it is told to stop; leaves the till closed.
    void work(const std::atomic<bool>& stopped);
    /// Closings that the till has answered with "ok".
    int acknowledged() const { return closed; }
    /// Times that the till was killed; each may have closed a check that nobody was told of.
    int kills() const { return killed; }
    QString database() const { return folder + QStringLiteral("/till.sqlite"); }

    /// One command of the till to its end.
    RunResult run(const QStringList& arguments) const;

private:
    void start();
    void serve();
    void kill(const QString& command);
    bool isOk(const QString& command);
    int upTo(int most) { return std::uniform_int_distribution<>(0, most)(random); }

    const QString folder;
    const int saleFiles;
    std::mt19937_64 random;
    std::unique_ptr<Program> till;
    int closed = 0;
    int killed = 0;
};
