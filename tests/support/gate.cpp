// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/gate.h"

#include <QUrl>

#include <httplib.h>
#include <mutex>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QByteArray headerOf(const httplib::Request& request, const char* name)
{
    return QByteArray::fromStdString(request.get_header_value(name));
}

} // namespace

struct Gate::Implementation
{
    Before before;
    After after;
    std::string host;
    int serverPort = 0;
    std::mutex passing;
    httplib::Server gate;
    int port = 0;
    std::thread thread;

    void pass(const httplib::Request& request, httplib::Response& answer)
    {
        const std::scoped_lock lock(passing);
        // a till that goes through a proxy names the whole address
        const QString path = QUrl(QString::fromStdString(request.path)).path();
        const QString endpoint = path.section(u'/', -1);
        if (before) {
            before(endpoint);
        }
        httplib::Client client(host, serverPort);
        const auto result = client.Post(
            path.toStdString(), {{"Authorization", request.get_header_value("Authorization")}},
            request.body, request.get_header_value("Content-Type"));
        answer.status = result ? result->status : 502;
        if (result) {
            answer.set_content(result->body, result->get_header_value("Content-Type"));
        }
        if (after) {
            after({endpoint, headerOf(request, "Content-Type"), headerOf(request, "Accept"),
                   headerOf(request, "Authorization"), QByteArray::fromStdString(request.body),
                   answer.status, QByteArray::fromStdString(answer.body)});
        }
    }
};

Gate::Gate(const QString& server, Before first, After then)
    : self(std::make_unique<Implementation>())
{
    const QUrl url(server);
    self->before = std::move(first);
    self->after = std::move(then);
    self->host = url.host().toStdString();
    self->serverPort = url.port();
    self->gate.Post(".*", [this](const httplib::Request& request, httplib::Response& answer) {
        self->pass(request, answer);
    });
    self->port = self->gate.bind_to_any_port("127.0.0.1");
    self->thread = std::thread([this] { self->gate.listen_after_bind(); });
}

Gate::~Gate()
{
    self->gate.stop();
    self->thread.join();
}

QString Gate::address() const
{
    return u"http://127.0.0.1:%1/"_s.arg(self->port);
}
