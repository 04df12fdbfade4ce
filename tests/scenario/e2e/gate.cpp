// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/e2e/gate.h"

#include <QUrl>

#include <httplib.h>
#include <mutex>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

struct Gate::Implementation
{
    Before before;
    std::string host;
    int serverPort = 0;
    std::mutex passing;
    httplib::Server gate;
    int port = 0;
    std::thread thread;

    void pass(const httplib::Request& request, httplib::Response& answer)
    {
        const std::scoped_lock lock(passing);
        const QString path = QUrl(QString::fromStdString(request.path)).path();
        before(path.section(u'/', -1));
        httplib::Client client(host, serverPort);
        const httplib::Headers headers{
            {"Authorization", request.get_header_value("Authorization")}};
        const auto result =
            client.Post(path.toStdString(), headers, request.body, "application/xml");
        answer.status = result ? result->status : 502;
        if (result) {
            answer.set_content(result->body, "application/xml");
        }
    }
};

Gate::Gate(const QString& server, Before before) : self(std::make_unique<Implementation>())
{
    const QUrl url(server);
    self->before = std::move(before);
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
