// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// What the run measured; printed at its end, with the seed that everything random follows from.
class Figures
{
public:
    /// Of the whole process; prints itself when all tests have run.
    static Figures& instance();

    /// The run's seed: ORVA_FAULT_SEED from the environment, or a fixed one.
    quint64 seed() const { return runSeed; }

    void countPair() { ++pairs; }
    /// A call that may wait for the server took so long.
    void noteCall(const QString& name, qint64 milliseconds);
    /// Prints everything on the standard output.
    void print() const;

private:
    Figures();

    quint64 runSeed;
    int pairs = 0;
    int calls = 0;
    qint64 longest = 0;
    QString longestName;
};
