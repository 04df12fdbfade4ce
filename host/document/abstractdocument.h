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
///
/// The host's: it makes the document and keeps it while a loyalty system works on it, both on the
/// host thread. Nothing here blocks or throws. A loyalty system reads, writes plug-in data and the
/// card record, and changes nothing else.
class HOST_EXPORT AbstractDocument
{
public:
    AbstractDocument();
    AbstractDocument(const AbstractDocument&) = delete;
    AbstractDocument& operator=(const AbstractDocument&) = delete;
    virtual ~AbstractDocument();

    /// The document's own identifier, unique over all tills and for good: a server takes a second
    /// document with the same one for the first.
    virtual QString getDocumentId() const = 0;
    /// The number printed on the check, above 0; a till may use it again some day.
    virtual int getCheckNumber() const = 0;
    /// The document's EDocumentType as a number; any other number is a kind that only the host
    /// knows.
    virtual int getDocumentType() const = 0;
    /// Whether the document has its own date and time.
    virtual bool hasDateTime() const = 0;
    /// That time, local; invalid without one.
    virtual QDateTime getDateTime() const = 0;
    /// Identifier of the sale that a return returns; empty for other documents.
    virtual QString getSaleDocumentId() const = 0;

    /// The goods lines in document order, shared with the host and never null.
    virtual QList<QSharedPointer<GoodsItem>> getGoodsItems() const = 0;
    /// The impacts applied to the document by whichever system, in the order of application.
    virtual QList<QSharedPointer<DocumentImpact>> getImpacts() const = 0;
    /// The card record of a loyalty system, shared with the host.
    /// @param loyaltySystemType the system's type code
    /// @return the first record with that code; null when the document has none
    virtual QSharedPointer<DocumentCardRecord> getCardRecord(int loyaltySystemType) const = 0;

    /// G - D - P. Below 0 only where impacts are larger than the goods.
    virtual double getCheckSum() const = 0;
    /// The check sum minus what has been tendered.
    virtual double getSumToPay() const = 0;
    /// Money tendered for the check, points not included.
    virtual double getPaymentSum() const = 0;

    /// A value of the plug-in data that is kept with the document.
    /// @param owner whose data they are
    /// @param key name of the value
    /// @param defaultValue returned when there is no such value
    /// @return the value as setPluginValue was given it, also after the document was stored and
    /// read
    virtual QVariant getPluginValue(const QString& owner, const QString& key,
                                    const QVariant& defaultValue) const = 0;
    /// Keeps a value of the plug-in data with the document: for its life, and with it when it is
    /// stored.
    /// @param owner whose data they are; each has its own keys
    /// @param key name of the value
    /// @param value replaces the former one; may be a text of megabytes, or lists and maps
    virtual void setPluginValue(const QString& owner, const QString& key,
                                const QVariant& value) = 0;

    /// Called by a loyalty system that has restored its state from the document: sums that the host
    /// keeps elsewhere are to be counted anew.
    virtual void refreshLoyaltyData() = 0;
};
