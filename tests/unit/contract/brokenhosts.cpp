// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "brokenhosts.h"

#include "host/document/document.h"
#include "ourhost.h"
#include "ourqueue.h"

using namespace Qt::StringLiterals;

namespace tests {
namespace {

class ForgetfulDocument : public Document
{
public:
    QVariant getPluginValue(const QString& owner, const QString& key,
                            const QVariant& /*defaultValue*/) const override
    {
        return Document::getPluginValue(owner, key, QVariant());
    }
};

class WithoutDefaults : public OurHost
{
public:
    QSharedPointer<AbstractDocument> makeDocument(const contract::DocumentData& data) override
    {
        auto document = QSharedPointer<ForgetfulDocument>::create();
        fill(*document, data);
        return document;
    }
};

class DroppingBroker : public DBQueueBroker
{
public:
    using DBQueueBroker::DBQueueBroker;
    bool addToQueue(const QString& queueName, const QVariantMap& message,
                    const QString& /*extra*/) override
    {
        return DBQueueBroker::addToQueue(queueName, message, {});
    }
};

class DroppingQueue : public OurQueue
{
public:
    DBQueueBroker& broker() override { return dropping; }

private:
    DroppingBroker dropping{opened()};
};

class WithoutExtra : public OurHost
{
public:
    std::unique_ptr<contract::QueueUnderTest> makeQueue() override
    {
        return std::make_unique<DroppingQueue>();
    }
};

class CredulousClient : public RestClient
{
public:
    int getError() override { return getHttpStatusCode() >= 400 ? 0 : RestClient::getError(); }
};

class WithoutStatuses : public OurHost
{
public:
    QSharedPointer<RestClient> makeRestClient() override
    {
        return QSharedPointer<CredulousClient>::create();
    }
};

class RepeatingWrapper : public XmlWrapper
{
public:
    void insertElement(QDomElement& parent, const QList<QString>& path, const QDomNode& node,
                       Operation /*operation*/) const override
    {
        QDomElement last = parent;
        for (const QString& name : path) {
            last = last.appendChild(last.ownerDocument().createElement(name)).toElement();
        }
        last.appendChild(node);
    }
};

class WithoutPaths : public OurHost
{
public:
    std::unique_ptr<XmlWrapper> makeXmlWrapper() override
    {
        return std::make_unique<RepeatingWrapper>();
    }
};

} // namespace

std::unique_ptr<contract::HostUnderTest> brokenHost(const QString& name)
{
    if (name == u"defaults"_s) {
        return std::make_unique<WithoutDefaults>();
    }
    if (name == u"extra"_s) {
        return std::make_unique<WithoutExtra>();
    }
    if (name == u"statuses"_s) {
        return std::make_unique<WithoutStatuses>();
    }
    return name == u"paths"_s ? std::make_unique<WithoutPaths>() : nullptr;
}

} // namespace tests
