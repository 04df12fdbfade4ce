// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/abstractdocument.h"
#include "host/document/edocumenttype.h"

#include <QMap>

/// A plain document that counts in whole kopecks.
class HOST_EXPORT Document : public AbstractDocument
{
public:
    Document();
    ~Document() override;

    QString getDocumentId() const override { return documentId; }
    void setDocumentId(const QString& value) { documentId = value; }
    int getCheckNumber() const override { return checkNumber; }
    void setCheckNumber(int value) { checkNumber = value; }
    int getDocumentType() const override { return documentType; }
    void setDocumentType(int value) { documentType = value; }
    void setDocumentType(EDocumentType value) { documentType = static_cast<int>(value); }

    bool hasDateTime() const override { return dateTime.isValid(); }
    QDateTime getDateTime() const override { return dateTime; }
    void setDateTime(const QDateTime& value) { dateTime = value; }

    QString getSaleDocumentId() const override { return saleDocumentId; }
    void setSaleDocumentId(const QString& value) { saleDocumentId = value; }

    QList<QSharedPointer<GoodsItem>> getGoodsItems() const override { return goodsItems; }
    void setGoodsItems(const QList<QSharedPointer<GoodsItem>>& value) { goodsItems = value; }

    QList<QSharedPointer<DocumentImpact>> getImpacts() const override { return impacts; }
    /// Applies an impact: its totals count in the sums from now on.
    void addImpact(const QSharedPointer<DocumentImpact>& impact) { impacts.append(impact); }
    /// Takes every impact of the loyalty system with that code off the document.
    void removeImpacts(int loyaltySystemType);

    QSharedPointer<DocumentCardRecord> getCardRecord(int loyaltySystemType) const override;
    QList<QSharedPointer<DocumentCardRecord>> getCardRecords() const { return cardRecords; }
    void addCardRecord(const QSharedPointer<DocumentCardRecord>& record);

    /// Each impact counts with its totals rounded to kopecks; one that is not finite counts as 0.
    double getCheckSum() const override;
    double getSumToPay() const override;
    double getPaymentSum() const override;
    qint64 getCheckSumKopecks() const;
    void setPaymentKopecks(qint64 value) { paymentKopecks = value; }

    QVariant getPluginValue(const QString& owner, const QString& key,
                            const QVariant& defaultValue) const override;
    void setPluginValue(const QString& owner, const QString& key, const QVariant& value) override;
    /// All plug-in data: owner -> key -> value.
    QMap<QString, QVariantMap> getPluginData() const { return pluginData; }
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
