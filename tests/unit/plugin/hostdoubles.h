// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/abstractdocument.h"
#include "host/services/config.h"
#include "host/services/dbqueuebroker.h"
#include "host/services/session.h"
#include "tests/unit/plugin/journal.h"

#include <QMap>
#include <QVariantMap>

namespace tests {

/// A value of a row: each time the next one, at the end the last one for ever.
template <typename T>
class Successive
{
public:
    Successive(const T& only) : values{only} {}
    Successive(std::initializer_list<T> row) : values(row) {}

    T next() const { return values.size() > 1 ? values.takeFirst() : values.constFirst(); }

private:
    mutable QList<T> values;
};

/// A document that answers what the test has put in.
class RecordingDocument : public AbstractDocument, public Recorder
{
public:
    using Recorder::Recorder;

    QSharedPointer<DocumentCardRecord> cardRecord;
    Successive<int> documentType = 1;
    Successive<double> checkSum = 0.0;
    Successive<double> sumToPay = 0.0;
    double paymentSum = 0;
    QDateTime dateTime;
    QList<QSharedPointer<GoodsItem>> goodsItems;
    QList<QSharedPointer<DocumentImpact>> impacts;
    QMap<QString, QVariantMap> pluginData;

    QString getDocumentId() const override { return answer(u"getDocumentId()", name()); }
    int getCheckNumber() const override { return answer(u"getCheckNumber()", 117); }
    int getDocumentType() const override
    {
        return answer(u"getDocumentType()", documentType.next());
    }
    bool hasDateTime() const override { return answer(u"hasDateTime()", dateTime.isValid()); }
    QDateTime getDateTime() const override { return answer(u"getDateTime()", dateTime); }
    QString getSaleDocumentId() const override
    {
        return answer(u"getSaleDocumentId()", QStringLiteral("sale"));
    }
    QList<QSharedPointer<GoodsItem>> getGoodsItems() const override
    {
        return answer(u"getGoodsItems()", goodsItems);
    }
    QList<QSharedPointer<DocumentImpact>> getImpacts() const override
    {
        return answer(u"getImpacts()", impacts);
    }
    QSharedPointer<DocumentCardRecord> getCardRecord(int loyaltySystemType) const override
    {
        return answer(QStringLiteral("getCardRecord(%1)").arg(loyaltySystemType), cardRecord);
    }
    double getCheckSum() const override { return answer(u"getCheckSum()", checkSum.next()); }
    double getSumToPay() const override { return answer(u"getSumToPay()", sumToPay.next()); }
    double getPaymentSum() const override { return answer(u"getPaymentSum()", paymentSum); }

    QVariant getPluginValue(const QString& owner, const QString& key,
                            const QVariant& defaultValue) const override
    {
        defaultWasInvalid = !defaultValue.isValid();
        return answer(QStringLiteral("getPluginValue(%1, %2)").arg(owner, key),
                      pluginData.value(owner).value(key, defaultValue));
    }
    void setPluginValue(const QString& owner, const QString& key, const QVariant& value) override
    {
        called(QStringLiteral("setPluginValue(%1, %2)").arg(owner, key));
        pluginData[owner].insert(key, value);
    }
    void refreshLoyaltyData() override { called(QStringLiteral("refreshLoyaltyData()")); }

    /// Whether the last default for a plug-in value was the invalid variant.
    mutable bool defaultWasInvalid = false;

private:
    template <typename T>
    T answer(QStringView call, const T& value) const
    {
        called(call.toString());
        return value;
    }
};

class RecordingConfig : public Config, public Recorder
{
public:
    RecordingConfig() : Recorder(QStringLiteral("config")) {}

    /// Keys that are not in here are absent.
    QVariantMap values;

    QString getString(const QString& key, const QString& defaultValue) const override
    {
        called(QStringLiteral("getString(%1, \"%2\")").arg(key, defaultValue));
        return values.contains(key) ? values.value(key).toString() : defaultValue;
    }
    int getInt(const QString& key, int defaultValue) const override
    {
        called(QStringLiteral("getInt(%1, %2)").arg(key).arg(defaultValue));
        return values.contains(key) ? values.value(key).toInt() : defaultValue;
    }
};

class RecordingSession : public Session, public Recorder
{
public:
    RecordingSession() : Recorder(QStringLiteral("session")) {}

    QSharedPointer<AbstractDocument> getDocument() override
    {
        called(QStringLiteral("getDocument()"));
        return Session::getDocument();
    }
    QSharedPointer<SessionContext> getSessionContext() override
    {
        called(QStringLiteral("getSessionContext()"));
        return Session::getSessionContext();
    }
};

class RecordingQueue : public DBQueueBroker, public Recorder
{
public:
    RecordingQueue() : Recorder(QStringLiteral("queue")) {}

    QList<QVariantMap> messages;
    bool result = true;

    bool addToQueue(const QString& queueName, const QVariantMap& message,
                    const QString& extra) override
    {
        called(QStringLiteral("addToQueue(\"%1\", message, \"%2\")").arg(queueName, extra));
        messages.append(message);
        return result;
    }
};

} // namespace tests
