// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace protocol {

/// What an element of the server's documents is about.
enum class Meaning
{
    /// A discount on a goods line; there are two elements that grant one.
    Discount,
    /// Points that a goods line earns as long as none are spent.
    Accrual,
    /// How much of a goods line may be paid with points.
    SpendingLimit,
    /// The same two for the whole check.
    CheckAccrual,
    CheckSpendingLimit,
    Balance,
    MessageToCashier,
    MessageToCustomer,
    /// What a confirmation says a goods line used.
    UsedDiscount,
    UsedPoints,
    /// Points that a return's line gives back.
    ReturnedPoints,
    /// What a confirmation says was paid in money.
    Payment,
};

/// An element with what it says.
struct Finding
{
    Meaning meaning = Meaning::Discount;
    /// Position of the goods line; 0 for the whole check.
    int position = 0;
    QString path;
    /// Line of the document, from 1.
    qint64 line = 0;
    /// What stands there.
    QString text;
    /// As a number, in currency units; 0 for what is none.
    double amount = 0;
    /// What the host counts for it: an amount below half a kopeck counts as nothing, and so does a
    /// discount below 0.
    qint64 kopecks = 0;
};

/// The elements of an answer, or of the confirmation made from one, that mean something to a check.
/// Where the server may repeat an element but the host reads the first one only, this does as well.
class Findings
{
public:
    explicit Findings(const QByteArray& document);

    /// Why the document could not be read to its end; empty when it was.
    QString problem() const { return error; }
    const QList<Finding>& all() const { return found; }
    /// In document order.
    QList<Finding> of(Meaning meaning, int position = 0) const;

    /// What the host counts for all of them.
    static qint64 sum(const QList<Finding>& findings);

private:
    QList<Finding> found;
    QString error;
};

} // namespace protocol
