// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/protocol/recorder.h"

#include <QUrl>

#include <httplib.h>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

QByteArray header(const httplib::Request& request, const char* name)
{
    return QByteArray::fromStdString(request.get_header_value(name));
}

} // namespace

struct Recorder::Implementation
{
    std::string host;
    int serverPort = 0;
    std::mutex passing;
    std::vector<Exchange> exchanges;
    httplib::Server proxy;
    int port = 0;
    std::thread thread;

    void pass(const httplib::Request& request, httplib::Response& answer)
    {
        const std::scoped_lock lock(passing);
        httplib::Client client(host, serverPort);
        const auto result = client.Post(
            request.path, {{"Authorization", request.get_header_value("Authorization")}},
            request.body, request.get_header_value("Content-Type"));
        answer.status = result ? result->status : 502;
        if (result) {
            answer.set_content(result->body, result->get_header_value("Content-Type"));
        }
        exchanges.push_back({QString::fromStdString(request.path).section(u'/', -1),
                             header(request, "Content-Type"), header(request, "Accept"),
                             header(request, "Authorization"),
                             QByteArray::fromStdString(request.body), answer.status,
                             QByteArray::fromStdString(answer.body)});
    }
};

Recorder::Recorder(const QString& server) : self(std::make_unique<Implementation>())
{
    const QUrl url(server);
    self->host = url.host().toStdString();
    self->serverPort = url.port();
    self->proxy.Post(".*", [this](const httplib::Request& request, httplib::Response& answer) {
        self->pass(request, answer);
    });
    self->port = self->proxy.bind_to_any_port("127.0.0.1");
    self->thread = std::thread([this] { self->proxy.listen_after_bind(); });
}

Recorder::~Recorder()
{
    self->proxy.stop();
    self->thread.join();
}

QString Recorder::address() const
{
    return u"http://127.0.0.1:%1/"_s.arg(self->port);
}

std::vector<Exchange> Recorder::exchanges() const
{
    const std::scoped_lock lock(self->passing);
    return self->exchanges;
}

} // namespace tests
