// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QVariant>

/// Points that a document earns on one goods line for one card. A value type whose fields are
/// read and written by property name, so that it can be kept with a document.
class HOST_EXPORT DocumentBonusRecord
{
    Q_GADGET
    /// Number of the card that earns.
    Q_PROPERTY(QString cardNumber MEMBER cardNumber)
    /// Position number of the goods line, an int.
    Q_PROPERTY(QVariant position MEMBER position)
    /// Points earned, in currency units.
    Q_PROPERTY(double bonusAmount MEMBER bonusAmount)
    /// The kind of points, by the host's table of currencies.
    Q_PROPERTY(int valutCode MEMBER valutCode)
    /// When the record was made, local time.
    Q_PROPERTY(QDateTime dateTime MEMBER dateTime)
    /// What the session was about when the record was made (Session::getSessionContext).
    Q_PROPERTY(QString sessionContext MEMBER sessionContext)
    /// True for an accrual, false for a record that only informs.
    Q_PROPERTY(bool accrual MEMBER accrual)

public:
    QString cardNumber;
    QVariant position;
    double bonusAmount = 0;
    int valutCode = 0;
    QDateTime dateTime;
    QString sessionContext;
    bool accrual = false;

    /// Compares field by field.
    /// @param other the record to compare with
    /// @return whether every field is equal, amounts to the last bit
    bool operator==(const DocumentBonusRecord& other) const;
};
