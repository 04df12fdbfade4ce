// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/verify/bench.h"
#include "till/verify/results.h"

#include <functional>

namespace till::verify {

/// Plays cases one after the other. What a case books is taken back before the next one begins, so
/// that their order does not matter.
class Run
{
public:
    using Progress = std::function<void(qint64 done, qint64 all)>;

    Run(Bench& where, const QList<Case>& cases) : bench(where), wanted(cases) {}

    /// Has the cases played in an order that follows from the number.
    void shuffle(quint32 seed) { order = seed; }
    /// To be called once.
    Results play(const Progress& progress);

    /// The cases of these names, of cases or of requirements; all where none is named.
    /// @throws Failure (Usage) for a name that nothing has
    static QList<Case> chosen(const QStringList& names);

private:
    Outcome playOne(const Case& played);
    Outcome playOnce(const Case& played);
    void watchTimes(Results& results) const;
    void watch(Results& results) const;
    void watchBalances(Results& results) const;

    Bench& bench;
    const QList<Case> wanted;
    quint32 order = 0;
    QStringList left; ///< in the server's books
};

} // namespace till::verify
