// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/document.h"
#include "till/checks/line.h"
#include "till/checks/loyaltystate.h"
#include "till/checks/pointschoice.h"

#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include <optional>

namespace till {

/// A check at the till: the document as the contracts show it to the loyalty system, and beside it
/// what the till counts in whole kopecks. The till's lines lead, the document's follow them.
///
/// G is the sum of the lines, D the discounts and P the points spent that the loyalty system has
/// put on the check; G - D - P is paid in money.
struct Check
{
    QSharedPointer<Document> document;
    QList<Line> lines;

    LoyaltyState loyalty = LoyaltyState::NoCard;
    /// Why the check goes on without the loyalty system: the reason that the cashier was told.
    QString refusal;
    /// What the server wrote to it, one line for whoever helps; not kept with a suspended check.
    QString serversWords;
    PointsChoice points;
    /// Whether points have been set since the last request, which the next choice must undo.
    bool pointsTouched = false;
    /// The accruals of the whole check by the loyalty system's own count; nothing when it gave no
    /// usable number.
    std::optional<qint64> systemEarnKopecks;
    QStringList cashierMessages;
    QStringList clientMessages;
    /// Cash handed over; nothing when the check is paid exactly.
    std::optional<qint64> tenderedKopecks;
    /// Whether the confirmation was queued when the check was closed.
    bool confirmed = false;
    /// How many returns of its sale were closed when this return was opened.
    int returnsBefore = 0;

    /// A new check with a document of its own: a fresh identifier, the present time in whole
    /// seconds, and the lines put into it.
    static Check create(EDocumentType type, int number, const QList<Line>& lines);

    /// A record for a card of the loyalty system with that code.
    static QSharedPointer<DocumentCardRecord> newCardRecord(const QString& cardNumber,
                                                            int systemType);

    QString id() const { return document->getDocumentId(); }
    int number() const { return document->getCheckNumber(); }
    bool isReturn() const;
    /// The card record of the check's one card, or null.
    QSharedPointer<DocumentCardRecord> cardRecord() const;
    /// The number of the check's card; empty when it has none.
    QString cardNumber() const;

    Line* line(int position);
    const Line* line(int position) const;

    /// Makes the document's goods lines anew from the till's.
    void fillDocument();
    /// Sums over the lines.
    qint64 goodsKopecks() const;
    qint64 discountKopecks() const;
    qint64 spentKopecks() const;
    qint64 earnedKopecks() const;
    qint64 givenBackKopecks() const;
    qint64 takenBackKopecks() const;
    /// What is paid in money for a sale, or paid back for a return.
    qint64 moneyKopecks() const;

    /// Tells the document how much of its sum has been tendered.
    void tenderToDocument(qint64 kopecks);
};

} // namespace till
