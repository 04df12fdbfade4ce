// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tlsserver.h"

#include "authority.h"

#include <httplib.h>
#include <mutex>
#include <set>
#include <thread>

using namespace Qt::StringLiterals;

class TlsServer::Implementation
{
public:
    Implementation(const QString& folder, const QString& certifiedName, const QByteArray& answer)
        : authority(folder, u"authority"_s), text(answer.toStdString())
    {
        const Authority::Certificate certificate = authority.certify(certifiedName);
        server = std::make_unique<httplib::SSLServer>(certificate.file.toStdString().c_str(),
                                                      certificate.keyFile.toStdString().c_str());
        server->set_keep_alive_max_count(1000);
        server->set_keep_alive_timeout(1); // how long its end waits for idle connections
        server->Post(".*", [this](const httplib::Request& request, httplib::Response& response) {
            const std::lock_guard lock(mutex);
            ++requestCount;
            peerPorts.insert(request.remote_port);
            response.set_content(text, "text/plain");
        });
        port = server->bind_to_any_port("127.0.0.1");
        thread = std::thread([this] { server->listen_after_bind(); });
        while (!server->is_running()) { // stop would be lost before
            std::this_thread::yield();
        }
    }

    ~Implementation()
    {
        server->stop();
        thread.join();
    }

    const Authority authority;
    const std::string text;
    int port = 0;
    std::mutex mutex;
    int requestCount = 0;
    std::set<int> peerPorts;

private:
    std::unique_ptr<httplib::SSLServer> server;
    std::thread thread;
};

TlsServer::TlsServer(const QString& folder, const QString& certifiedName, const QByteArray& answer)
    : implementation(std::make_unique<Implementation>(folder, certifiedName, answer))
{}

TlsServer::~TlsServer() = default;

QUrl TlsServer::url(const QString& host) const
{
    return QUrl(u"https://%1:%2/api"_s.arg(host).arg(implementation->port));
}

QString TlsServer::authorityFile() const
{
    return implementation->authority.file();
}

int TlsServer::requests() const
{
    const std::lock_guard lock(implementation->mutex);
    return implementation->requestCount;
}

int TlsServer::peers() const
{
    const std::lock_guard lock(implementation->mutex);
    return static_cast<int>(implementation->peerPorts.size());
}
