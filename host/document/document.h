// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/abstractdocument.h"
#include "host/document/edocumenttype.h"

#include <QMap>

/// A plain document that counts in whole kopecks. For a host that has none of its own: it holds
/// what it is given and looks after nothing. Belongs to one thread.
class HOST_EXPORT Document : public AbstractDocument
{
public:
    /// A document without identifier, number, type, lines and money.
    Document();
    ~Document() override;

    /// The identifier that was set.
    QString getDocumentId() const override { return documentId; }
    void setDocumentId(const QString& value) { documentId = value; }
    /// The number that was set; 0 before.
    int getCheckNumber() const override { return checkNumber; }
    void setCheckNumber(int value) { checkNumber = value; }
    /// The type that was set; 0 before.
    int getDocumentType() const override { return documentType; }
    void setDocumentType(int value) { documentType = value; }
    /// The same for a type that has a name.
    /// @param value is kept as its number
    void setDocumentType(EDocumentType value) { documentType = static_cast<int>(value); }

    /// Whether a valid time was set.
    bool hasDateTime() const override { return dateTime.isValid(); }
    /// The time that was set; invalid before.
    QDateTime getDateTime() const override { return dateTime; }
    void setDateTime(const QDateTime& value) { dateTime = value; }

    /// The sale's identifier that was set; empty before.
    QString getSaleDocumentId() const override { return saleDocumentId; }
    void setSaleDocumentId(const QString& value) { saleDocumentId = value; }

    /// The lines that were set, shared.
    QList<QSharedPointer<GoodsItem>> getGoodsItems() const override { return goodsItems; }
    void setGoodsItems(const QList<QSharedPointer<GoodsItem>>& value) { goodsItems = value; }

    /// The impacts that were added and not removed.
    QList<QSharedPointer<DocumentImpact>> getImpacts() const override { return impacts; }
    /// Applies an impact: its totals count in the sums from now on.
    /// @param impact shared with the document, not null
    void addImpact(const QSharedPointer<DocumentImpact>& impact) { impacts.append(impact); }
    /// Takes every impact of a loyalty system off the document.
    /// @param loyaltySystemType the system's type code; an impact without a card record has none
    void removeImpacts(int loyaltySystemType);

    /// The first record of that system.
    /// @param loyaltySystemType the system's type code
    /// @return the record, shared; null when there is none
    QSharedPointer<DocumentCardRecord> getCardRecord(int loyaltySystemType) const override;
    /// All card records in the order in which they were added.
    QList<QSharedPointer<DocumentCardRecord>> getCardRecords() const { return cardRecords; }
    /// Puts a card on the document.
    /// @param record shared with the document, not null; a second one of the same system is kept
    /// but not found
    void addCardRecord(const QSharedPointer<DocumentCardRecord>& record);

    /// Each impact counts with its totals rounded to kopecks; one that is not finite counts as 0.
    double getCheckSum() const override;
    /// The check sum minus the payment, in currency units.
    double getSumToPay() const override;
    /// What setPaymentKopecks was given, in currency units.
    double getPaymentSum() const override;
    /// getCheckSum in whole kopecks, exactly.
    qint64 getCheckSumKopecks() const;
    /// Notes what was tendered.
    /// @param value in kopecks, points not included
    void setPaymentKopecks(qint64 value) { paymentKopecks = value; }

    /// A value of getPluginData.
    /// @param owner whose it is
    /// @param key its name
    /// @param defaultValue returned when there is none
    /// @return the value as it was set
    QVariant getPluginValue(const QString& owner, const QString& key,
                            const QVariant& defaultValue) const override;
    /// Sets a value of getPluginData.
    /// @param owner whose it is
    /// @param key its name
    /// @param value replaces the former one
    void setPluginValue(const QString& owner, const QString& key, const QVariant& value) override;
    /// All plug-in data: owner -> key -> value. What stores a document stores them with it.
    QMap<QString, QVariantMap> getPluginData() const { return pluginData; }
    /// Replaces all plug-in data, those of every owner; for what reads a stored document.
    /// @param value owner -> key -> value
    void setPluginData(const QMap<QString, QVariantMap>& value) { pluginData = value; }

    /// Nothing to refresh: every sum is computed when it is asked for.
    void refreshLoyaltyData() override {}

private:
    QString documentId;
    int checkNumber = 0;
    int documentType = 0;
    QDateTime dateTime;
    QString saleDocumentId;
    QList<QSharedPointer<GoodsItem>> goodsItems;
    QList<QSharedPointer<DocumentImpact>> impacts;
    QList<QSharedPointer<DocumentCardRecord>> cardRecords;
    qint64 paymentKopecks = 0;
    QMap<QString, QVariantMap> pluginData;
};
