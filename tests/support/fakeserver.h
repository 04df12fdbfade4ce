// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/restclient.h"

#include <QList>
#include <QStringList>
#include <functional>
#include <mutex>

/// The process's transport while it lives, for one request at a time: hands every post to a
/// function that plays the server.
class FakeServer : public RestClient
{
public:
    struct Request
    {
        QUrl url;
        QByteArray body;
        QHash<QString, QString> headers;
        int timeoutSeconds = 0;
    };

    struct Reply
    {
        int status = 200; ///< 0: no connection
        QByteArray body = {};
        QString retryAfter = {};
        bool cut = false; ///< the status came, the body did not
        int sendCount = 1;
        QString transportErrorId = QStringLiteral("restTransportError");
    };

    using Script = std::function<Reply(const Request&)>;

    /// Answers everything with 200 until told otherwise.
    FakeServer() : before(MockFactory<RestClient>::mocked)
    {
        answer({});
        MockFactory<RestClient>::mocked = this;
    }
    ~FakeServer() override { MockFactory<RestClient>::mocked = before; }
    FakeServer(const FakeServer&) = delete;
    FakeServer& operator=(const FakeServer&) = delete;

    void setScript(Script play) { script = std::move(play); }
    /// Answers everything like this from now on.
    void answer(const Reply& always)
    {
        script = [always](const Request&) { return always; };
    }

    void post(const QUrl& url, const QByteArray& body,
              const QHash<QString, QString>& headers) override
    {
        Request request{url, body, headers, timeoutSeconds};
        {
            const std::lock_guard lock(mutex);
            requests.append(request);
        }
        const Reply made = script(request);
        const std::lock_guard lock(mutex);
        reply = made;
    }
    int getError() override
    {
        const Reply last = current();
        const bool failed = last.status == 0 || last.cut;
        return failed ? 7 : (last.status >= 400 ? last.status : 0);
    }
    int getHttpStatusCode() override { return current().status; }
    tr::Tr getErrorText() override
    {
        return getError() == 0 ? tr::Tr()
                               : tr::Tr(current().transportErrorId, QStringLiteral("Нет связи"));
    }
    QByteArray getResponse() override { return current().body; }
    void setTimeout(int seconds) override { timeoutSeconds = seconds; }
    QString getResponseHeader(const QString& name) override
    {
        return name.compare(QLatin1StringView("Retry-After"), Qt::CaseInsensitive) == 0
                   ? current().retryAfter
                   : QString();
    }
    int getSendCount() override { return current().sendCount; }

    /// What was posted where, for comparing: "body -> path".
    QStringList log() const
    {
        QStringList lines;
        for (const Request& request : requests) {
            lines.append(QString::fromUtf8(request.body) + QStringLiteral(" -> ") +
                         request.url.path());
        }
        return lines;
    }

    QList<QByteArray> bodies() const
    {
        QList<QByteArray> all;
        for (const Request& request : requests) {
            all.append(request.body);
        }
        return all;
    }

    QList<Request> requests;

private:
    Reply current()
    {
        const std::lock_guard lock(mutex);
        return reply;
    }

    RestClient* before;
    std::mutex mutex; // several deliverers may take turns
    Script script;
    Reply reply{0};
    int timeoutSeconds = 0;
};
