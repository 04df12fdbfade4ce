// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/verify/cases.h"
#include "till/verify/complaint.h"
#include "till/verify/requirement.h"

#include <QStringList>

namespace till::verify {

enum class State
{
    Held,
    Broken,
    NotTried,
};

/// For programs: "held", "broken", "notTried".
QString nameOf(State state);

/// What came of a case.
struct Outcome
{
    QString name;
    QString requirement; ///< that is broken, which may be another than the case's own
    State state = State::NotTried;
    Complaint complaint = {}; ///< where it is broken
    QString reason = {};      ///< why it was not tried
    qint64 milliseconds = 0;
};

/// What came of all that is tried of a requirement.
struct Verdict
{
    Requirement requirement;
    State state = State::NotTried;
    QString reason; ///< why nothing of it was tried
    QList<Outcome> outcomes;
};

/// How long the server took for its answers, in milliseconds.
struct Times
{
    QList<qint64> answers; ///< sorted

    qint64 share(int percent) const;
    /// How many took up to each of the limits, and more than the last one.
    QList<int> histogram() const;
    static QList<qint64> limits();
};

/// A whole run.
struct Results
{
    QString server;
    quint32 seed = 0;        ///< of the order; 0: that of the list
    QList<Outcome> outcomes; ///< in the order of the list, whichever they were played in
    Times times;
    QStringList left; ///< identifiers of checks that stay in the books

    /// In the order of the protocol's page; those that were left out on purpose are not among them.
    QList<Verdict> verdicts() const;
    /// The requirements that are broken, the one first whose failure explains the others'.
    QStringList broken() const;
    int count(State state) const;
    /// Whether the server may serve tills.
    /// @param strict what a server should do is what it must do
    bool isGood(bool strict) const;
};

} // namespace till::verify
