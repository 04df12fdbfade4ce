// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/documentcardrecord.h"
#include "host/document/ediscountmode.h"
#include "host/document/ediscountobject.h"
#include "host/document/ediscounttype.h"
#include "host/document/eimpactsource.h"
#include "host/hostexport.h"

#include <QDateTime>
#include <QSharedPointer>
#include <QString>
#include <QVariant>

/// One impact on a goods line: what was granted or spent, by whom and why. Holds what it is given;
/// nothing is checked.
class HOST_EXPORT DocumentImpactDetail
{
public:
    /// A detail in which nothing is set: no card, position 0, sum 0, kinds that are none.
    DocumentImpactDetail();

    /// The record of the card that it happened for, shared; null for none.
    QSharedPointer<DocumentCardRecord> getCardRecord() const { return cardRecord; }
    void setCardRecord(const QSharedPointer<DocumentCardRecord>& value) { cardRecord = value; }

    /// The loyalty-system code of the card record as an int; null without a card record.
    QVariant getCardType() const;

    /// The host's own code of the card record; null when not set.
    QVariant getCardIndex() const { return cardIndex; }
    void setCardIndex(const QVariant& value) { cardIndex = value; }

    /// When it was granted, local time.
    QDateTime getDateTime() const { return dateTime; }
    void setDateTime(const QDateTime& value) { dateTime = value; }

    /// Whether it is a discount or points spent.
    EDiscountType::type getDiscountType() const { return discountType; }
    void setDiscountType(EDiscountType::type value) { discountType = value; }

    /// Whether a rate or a sum was granted.
    EDiscountMode::type getDiscountMode() const { return discountMode; }
    void setDiscountMode(EDiscountMode::type value) { discountMode = value; }

    /// The name printed on the slip.
    QString getDiscountName() const { return discountName; }
    void setDiscountName(const QString& value) { discountName = value; }

    /// Whether it is about one line or the whole check.
    EDiscountObject::type getDiscountObject() const { return discountObject; }
    void setDiscountObject(EDiscountObject::type value) { discountObject = value; }

    /// Position number of the goods line.
    int getPosition() const { return position; }
    void setPosition(int value) { position = value; }

    /// The size as the mode counts it, percent or currency units; null when not set.
    QVariant getDiscountRate() const { return discountRate; }
    void setDiscountRate(const QVariant& value) { discountRate = value; }

    /// What it takes off the line, in currency units.
    double getDiscountSum() const { return discountSum; }
    void setDiscountSum(double value) { discountSum = value; }

    /// Who has granted it.
    EImpactSource::source getImpactSource() const { return impactSource; }
    void setImpactSource(EImpactSource::source value) { impactSource = value; }

    /// True when the impact may lead below the line's minimum price.
    bool isMinPriceIgnored() const { return minPriceIgnored; }
    void setMinPriceIgnored(bool value) { minPriceIgnored = value; }

private:
    QSharedPointer<DocumentCardRecord> cardRecord;
    QVariant cardIndex;
    QDateTime dateTime;
    EDiscountType::type discountType = {};
    EDiscountMode::type discountMode = {};
    QString discountName;
    EDiscountObject::type discountObject = {};
    int position = 0;
    QVariant discountRate;
    double discountSum = 0;
    EImpactSource::source impactSource = {};
    bool minPriceIgnored = false;
};
