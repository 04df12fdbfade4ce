// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordingtransport.h"

#include "host/http/serveraddress.h"
#include "till/recording/recorder.h"
#include "till/recording/valuejson.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace till {

RecordingTransport::RecordingTransport(Recorder& journal)
    : recorder(journal), before(MockFactory<RestClient>::mocked)
{
    MockFactory<RestClient>::mocked = this;
}

RecordingTransport::~RecordingTransport()
{
    MockFactory<RestClient>::mocked = before;
}

RestClient* RecordingTransport::worker()
{
    if (before != nullptr) {
        return before;
    }
    return recorder.isOwnThread() ? &own : nullptr;
}

bool RecordingTransport::isSecret(const QString& headerName)
{
    return headerName.contains(u"authorization"_s, Qt::CaseInsensitive) ||
           headerName.contains(u"cookie"_s, Qt::CaseInsensitive);
}

QJsonObject RecordingTransport::harmless(const QHash<QString, QString>& headers)
{
    QJsonObject object;
    for (auto it = headers.cbegin(); it != headers.cend(); ++it) {
        if (!isSecret(it.key())) {
            object.insert(it.key(), it.value());
        }
    }
    return object;
}

void RecordingTransport::noteCall(const QString& name)
{
    recorder.note([&] { return QJsonObject{{u"transport"_s, name}}; });
}

void RecordingTransport::post(const QUrl& url, const QByteArray& body,
                              const QHash<QString, QString>& headers)
{
    RestClient* const client = worker();
    if (client == nullptr) {
        RestClient::post(url, body, headers);
        return;
    }
    QElapsedTimer clock;
    clock.start();
    {
        const Recorder::InService service(recorder);
        client->post(url, body, headers);
    }
    recorder.note([&] {
        const QJsonObject failure{{u"id"_s, client->getErrorText().id()},
                                  {u"text"_s, client->getErrorText().ru()}};
        return QJsonObject{
            {u"exchange"_s, QJsonObject{{u"url"_s, poshost::serveraddress::shown(url)},
                                        {u"headers"_s, harmless(headers)},
                                        {u"request"_s, recorder.ofBytes(body)},
                                        {u"status"_s, client->getHttpStatusCode()},
                                        {u"error"_s, client->getError()},
                                        {u"errorText"_s, failure},
                                        {u"sendCount"_s, client->getSendCount()},
                                        {u"answer"_s, recorder.ofBytes(client->getResponse())},
                                        {u"milliseconds"_s, valuejson::ofElapsed(clock)}}}};
    });
}

int RecordingTransport::getError()
{
    RestClient* const client = worker();
    noteCall(u"getError"_s);
    return client != nullptr ? client->getError() : RestClient::getError();
}

int RecordingTransport::getHttpStatusCode()
{
    RestClient* const client = worker();
    noteCall(u"getHttpStatusCode"_s);
    return client != nullptr ? client->getHttpStatusCode() : RestClient::getHttpStatusCode();
}

tr::Tr RecordingTransport::getErrorText()
{
    RestClient* const client = worker();
    noteCall(u"getErrorText"_s);
    return client != nullptr ? client->getErrorText() : RestClient::getErrorText();
}

QByteArray RecordingTransport::getResponse()
{
    RestClient* const client = worker();
    noteCall(u"getResponse"_s);
    return client != nullptr ? client->getResponse() : RestClient::getResponse();
}

void RecordingTransport::setTimeout(int seconds)
{
    RestClient* const client = worker();
    recorder.note([&] {
        return QJsonObject{{u"transport"_s, u"setTimeout"_s}, {u"seconds"_s, seconds}};
    });
    client != nullptr ? client->setTimeout(seconds) : RestClient::setTimeout(seconds);
}

QString RecordingTransport::getResponseHeader(const QString& name)
{
    RestClient* const client = worker();
    const QString value =
        client != nullptr ? client->getResponseHeader(name) : RestClient::getResponseHeader(name);
    recorder.note([&] {
        return QJsonObject{
            {u"transport"_s, u"getResponseHeader"_s}, {u"name"_s, name}, {u"value"_s, value}};
    });
    return value;
}

int RecordingTransport::getSendCount()
{
    RestClient* const client = worker();
    noteCall(u"getSendCount"_s);
    return client != nullptr ? client->getSendCount() : RestClient::getSendCount();
}

} // namespace till
