// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordingbroker.h"

#include "host/http/serveraddress.h"
#include "till/recording/recorder.h"
#include "till/recording/recordingtransport.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

QVariantMap withoutSecrets(const QVariantMap& message)
{
    QVariantMap headers = message.value(u"headers"_s).toMap();
    headers.removeIf([](const auto& header) { return RecordingTransport::isSecret(header.key()); });
    QVariantMap urls = message.value(u"urls"_s).toMap();
    for (QVariant& url : urls) {
        url = poshost::serveraddress::shown(url.toString());
    }
    QVariantMap harmless = message;
    harmless.insert(u"headers"_s, headers);
    harmless.insert(u"urls"_s, urls);
    return harmless;
}

QJsonObject event(const QString& queueName, const QVariantMap& message, const QString& extra,
                  Recorder& recorder)
{
    const QVariantMap harmless = withoutSecrets(message);
    QJsonObject content;
    for (auto it = harmless.cbegin(); it != harmless.cend(); ++it) {
        content.insert(it.key(), recorder.ofVariant(it.value()));
    }
    return {{u"name"_s, queueName}, {u"message"_s, content}, {u"extra"_s, extra}};
}

} // namespace

RecordingBroker::RecordingBroker(Recorder& journal)
    : recorder(journal), before(Singleton<DBQueueBroker>::instance)
{
    Singleton<DBQueueBroker>::instance = this;
}

RecordingBroker::~RecordingBroker()
{
    Singleton<DBQueueBroker>::instance = before;
}

bool RecordingBroker::addToQueue(const QString& queueName, const QVariantMap& message,
                                 const QString& extra)
{
    try {
        bool added = false;
        {
            const Recorder::InService service(recorder);
            added = before->addToQueue(queueName, message, extra);
        }
        recorder.note([&] {
            return QJsonObject{{u"queue"_s, event(queueName, message, extra, recorder)}};
        });
        return added;
    } catch (const std::exception& error) {
        recorder.note([&] {
            QJsonObject refused = event(queueName, message, extra, recorder);
            refused.insert(u"thrown"_s, Recorder::describe(&error));
            return QJsonObject{{u"queue"_s, refused}};
        });
        throw;
    }
}

} // namespace till
