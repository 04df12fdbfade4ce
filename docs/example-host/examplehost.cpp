// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "examplehost.h"

#include "host/core/basicexception.h"
#include "host/document/document.h"

using namespace Qt::StringLiterals;

namespace {

/// This till keeps its settings in memory.
class OwnConfig : public Config
{
public:
    explicit OwnConfig(const QMap<QString, QVariant>& given) : values(given) {}

    QString getString(const QString& key, const QString& defaultValue) const override
    {
        const QVariant value = values.value(key);
        return value.typeId() == QMetaType::QString ? value.toString() : defaultValue;
    }
    int getInt(const QString& key, int defaultValue) const override
    {
        const QVariant value = values.value(key);
        return value.typeId() == QMetaType::Int ? value.toInt() : defaultValue;
    }

private:
    QMap<QString, QVariant> values;
};

/// This till's queue, here a list: what is added during a transaction counts with its commit.
class OwnBroker : public DBQueueBroker
{
public:
    bool addToQueue(const QString& queueName, const QVariantMap& message,
                    const QString& extra) override
    {
        if (broken) {
            throw BasicException(tr::Tr(u"queueError"_s, u"Нет места на диске"_s));
        }
        contract::StoredMessage added;
        added.queue = queueName;
        added.extra = extra;
        added.payload = message.value(u"payload"_s).toString();
        const QVariantMap headers = message.value(u"headers"_s).toMap();
        for (const auto& [name, value] : headers.asKeyValueRange()) {
            added.headers.insert(name, value.toString());
        }
        QMap<int, QString> addresses;
        const QVariantMap urls = message.value(u"urls"_s).toMap();
        for (const auto& [number, url] : urls.asKeyValueRange()) {
            addresses.insert(number.toInt(), url.toString());
        }
        added.addresses = addresses.values();
        (inTransaction ? pending : messages).append(added);
        return true;
    }

    QList<contract::StoredMessage> messages;
    QList<contract::StoredMessage> pending;
    bool inTransaction = false;
    bool broken = false;
};

class Queue : public contract::QueueUnderTest
{
public:
    DBQueueBroker& broker() override { return own; }
    QList<contract::StoredMessage> stored() override { return own.messages; }
    void inTransaction(const std::function<void()>& work) override
    {
        inAbandonedTransaction(work);
        own.messages.append(own.pending);
    }
    void inAbandonedTransaction(const std::function<void()>& work) override
    {
        own.pending.clear();
        own.inTransaction = true;
        work();
        own.inTransaction = false;
    }
    void breakStorage() override { own.broken = true; }

private:
    OwnBroker own;
};

} // namespace

QSharedPointer<AbstractDocument> ExampleHost::makeDocument(const contract::DocumentData& data)
{
    auto document = QSharedPointer<Document>::create();
    document->setDocumentId(data.documentId);
    document->setCheckNumber(data.checkNumber);
    document->setDocumentType(data.documentType);
    document->setDateTime(data.dateTime);
    document->setSaleDocumentId(data.saleDocumentId);
    document->setGoodsItems(data.goodsItems);
    for (const auto& impact : data.impacts) {
        document->addImpact(impact);
    }
    for (const auto& record : data.cardRecords) {
        document->addCardRecord(record);
    }
    document->setPaymentKopecks(data.paymentKopecks);
    return document;
}

/// This till keeps no suspended documents yet: what it "restores" has lost the plug-in data. The
/// suite says so.
QSharedPointer<AbstractDocument>
ExampleHost::suspendAndRestore(const QSharedPointer<AbstractDocument>& document)
{
    contract::DocumentData data;
    data.documentId = document->getDocumentId();
    return makeDocument(data);
}

std::unique_ptr<Config> ExampleHost::makeConfig(const QMap<QString, QVariant>& values)
{
    return std::make_unique<OwnConfig>(values);
}

std::unique_ptr<contract::QueueUnderTest> ExampleHost::makeQueue()
{
    return std::make_unique<Queue>();
}
