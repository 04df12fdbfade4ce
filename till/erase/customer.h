// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/person/personmask.h"

namespace till {

struct Check;

/// The customer who is to be forgotten. First everything is looked through for the names that stand
/// beside the card (`learn`), then it is masked: only where the card is, since others have the same
/// names.
class Customer
{
public:
    /// @throws Failure (Usage) when the number is too short to be told from sums and codes, or is
    /// one that was masked already
    explicit Customer(const QString& card);

    QString card() const { return number; }
    void learn(const Check& check);
    /// One record.
    void learn(const QByteArray& record);

    bool isIn(const Check& check) const;
    bool isInRecord(const QByteArray& record) const;
    bool isInText(const QString& text) const { return alone.hasCard(text); }
    /// Whether bytes of whatever kind hold the number as a text.
    bool isInBytes(const QByteArray& bytes) const;

    /// The mask with all that was learned.
    PersonMask mask() const { return PersonMask(known); }

private:
    const QString number;
    People known;
    PersonMask alone; ///< of the number only
};

} // namespace till
