// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/store/ledgerserver.h"

#include <chrono>
#include <httplib.h>
#include <thread>

using namespace Qt::StringLiterals;

struct LedgerServer::Implementation
{
    httplib::Server server;
    std::thread thread;
    int port = 0;
};

LedgerServer::LedgerServer() : self(std::make_unique<Implementation>())
{
    self->server.new_task_queue = [] { return new httplib::ThreadPool(32); };
    self->server.set_keep_alive_max_count(1'000'000);
    self->server.set_tcp_nodelay(true);
    self->server.Post(".*", [this](const httplib::Request& request, httplib::Response& response) {
        std::unique_lock guard(mutex);
        ending.wait_for(guard, std::chrono::milliseconds(delay), [this] { return isEnding; });
        ++posted;
        const auto body = QByteArray::fromStdString(request.body);
        if (known.contains(body)) {
            ++again;
            response.status = 409;
            return;
        }
        known.insert(body, 1);
        order.append(body);
        response.status = 200;
    });
    self->port = self->server.bind_to_any_port("127.0.0.1");
    self->thread = std::thread([this] { self->server.listen_after_bind(); });
}

LedgerServer::~LedgerServer()
{
    {
        const std::lock_guard guard(mutex);
        isEnding = true; // nobody waits for the answers that are delayed yet
    }
    ending.notify_all();
    self->server.stop();
    self->thread.join();
}

QString LedgerServer::address() const
{
    return u"http://127.0.0.1:%1/"_s.arg(self->port);
}

QList<QByteArray> LedgerServer::booked() const
{
    const std::lock_guard guard(mutex);
    return order;
}
