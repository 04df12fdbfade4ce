// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/documentcardrecord.h"
#include "host/document/documentimpact.h"
#include "host/document/goodsitem.h"
#include "host/hostexport.h"

#include <QDateTime>
#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QVariant>

/// A document of the host: a check under construction or closed. Money is in currency units.
///
/// With G the sum of the goods lines, D the discounts and P the points spent that a loyalty system
/// has put on the document: the check sum is G - D - P, the sum to pay is that minus what has been
/// tendered.
class HOST_EXPORT AbstractDocument
{
public:
    AbstractDocument();
    AbstractDocument(const AbstractDocument&) = delete;
    AbstractDocument& operator=(const AbstractDocument&) = delete;
    virtual ~AbstractDocument();

    /// The document's own identifier, unique over all tills.
    virtual QString getDocumentId() const = 0;
    /// The number printed on the check.
    virtual int getCheckNumber() const = 0;
    /// The document's EDocumentType as a number.
    virtual int getDocumentType() const = 0;
    /// Whether the document has its own date and time, and that time.
    virtual bool hasDateTime() const = 0;
    virtual QDateTime getDateTime() const = 0;
    /// Identifier of the sale that a return returns; empty for other documents.
    virtual QString getSaleDocumentId() const = 0;

    /// The goods lines in document order.
    virtual QList<QSharedPointer<GoodsItem>> getGoodsItems() const = 0;
    /// The impacts applied to the document, in the order of application.
    virtual QList<QSharedPointer<DocumentImpact>> getImpacts() const = 0;
    /// The card record of the loyalty system with that code; null when the document has none.
    virtual QSharedPointer<DocumentCardRecord> getCardRecord(int loyaltySystemType) const = 0;

    virtual double getCheckSum() const = 0;
    virtual double getSumToPay() const = 0;
    /// Money tendered for the check, points not included.
    virtual double getPaymentSum() const = 0;

    /// A value of the plug-in data that is kept with the document, or the default.
    virtual QVariant getPluginValue(const QString& owner, const QString& key,
                                    const QVariant& defaultValue) const = 0;
    virtual void setPluginValue(const QString& owner, const QString& key,
                                const QVariant& value) = 0;

    /// Called by a loyalty system that has restored its state from the document.
    virtual void refreshLoyaltyData() = 0;
};
