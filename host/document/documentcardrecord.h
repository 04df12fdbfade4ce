// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/card.h"
#include "host/hostexport.h"

#include <QSharedPointer>
#include <QVariant>

/// A card's entry in a document: which loyalty system it belongs to and what that system last said
/// about it. Amounts are points counted in money.
class HOST_EXPORT DocumentCardRecord
{
public:
    /// A record before anything was asked about its card.
    /// @param card the card, not null for a card that takes part in a pre-check
    /// @param loyaltySystemType code of the loyalty system that the card belongs to
    /// @param codeInternal the host's own code of this record
    explicit DocumentCardRecord(const QSharedPointer<Card>& card = {}, int loyaltySystemType = 0,
                                int codeInternal = 0);

    /// The card, shared; null when the record was made without.
    QSharedPointer<Card> getCard() const { return card; }
    /// The card's number as a text; null when there is no card.
    QVariant getNumber() const;
    /// Code of the loyalty system that the card belongs to.
    int getLoyaltySystemType() const { return loyaltySystemType; }
    /// The host's own code of this record; impacts carry it (DocumentImpactDetail::getCardIndex).
    int getCodeInternal() const { return codeInternal; }

    /// Points that may be spent on this document, in currency units; 0 before a pre-check.
    double getPointsForSpend() const { return pointsForSpend; }
    void setPointsForSpend(double points) { pointsForSpend = points; }

    /// Points that the document will earn: a double once a pre-check has set it, null before.
    QVariant getPointsForEarn() const { return pointsForEarn; }
    void setPointsForEarn(const QVariant& points) { pointsForEarn = points; }

    /// The client's balance: a double once a pre-check has set it, null before.
    QVariant getBonusBalance() const { return bonusBalance; }
    void setBonusBalance(const QVariant& balance) { bonusBalance = balance; }

private:
    QSharedPointer<Card> card;
    int loyaltySystemType;
    int codeInternal;
    double pointsForSpend = 0;
    QVariant pointsForEarn;
    QVariant bonusBalance;
};
