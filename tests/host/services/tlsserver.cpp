// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tlsserver.h"

#include <QProcess>
#include <httplib.h>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

void openssl(const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(u"openssl"_s, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0) {
        throw std::runtime_error("openssl: " + process.readAll().toStdString());
    }
}

} // namespace

class TlsServer::Implementation
{
public:
    Implementation(const TestFolder& folder, const QString& certifiedName)
        : authority(folder.file(u"authority.pem"_s))
    {
        const QString certificate = folder.file(u"server.pem"_s);
        const QString key = folder.file(u"server.key"_s);
        makeCertificates(folder, certifiedName, certificate, key);
        server = std::make_unique<httplib::SSLServer>(certificate.toStdString().c_str(),
                                                      key.toStdString().c_str());
        server->set_keep_alive_max_count(1000);
        server->set_keep_alive_timeout(1); // how long its end waits for idle connections
        server->Post(".*", [this](const httplib::Request& request, httplib::Response& response) {
            const std::lock_guard lock(mutex);
            ++requestCount;
            peerPorts.insert(request.remote_port);
            response.set_content("secure", "text/plain");
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

    const QString authority;
    int port = 0;
    std::mutex mutex;
    int requestCount = 0;
    std::set<int> peerPorts;

private:
    void makeCertificates(const TestFolder& folder, const QString& name, const QString& certificate,
                          const QString& key) const
    {
        const QString authorityKey = folder.file(u"authority.key"_s);
        const QString wish = folder.file(u"server.csr"_s);
        const QString names =
            folder.write(u"names.cnf"_s, "subjectAltName=DNS:" + name.toUtf8() + "\n");
        const QStringList newKey{u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
                                 u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s};
        openssl(QStringList{u"req"_s, u"-x509"_s} + newKey +
                QStringList{u"-keyout"_s, authorityKey, u"-out"_s, authority, u"-days"_s, u"2"_s,
                            u"-subj"_s, u"/CN=Test authority"_s});
        openssl(QStringList{u"req"_s} + newKey +
                QStringList{u"-keyout"_s, key, u"-out"_s, wish, u"-subj"_s, u"/CN="_s + name});
        openssl({u"x509"_s, u"-req"_s, u"-in"_s, wish, u"-CA"_s, authority, u"-CAkey"_s,
                 authorityKey, u"-CAcreateserial"_s, u"-days"_s, u"2"_s, u"-extfile"_s, names,
                 u"-out"_s, certificate});
    }

    std::unique_ptr<httplib::SSLServer> server;
    std::thread thread;
};

TlsServer::TlsServer(const TestFolder& folder, const QString& certifiedName)
    : implementation(std::make_unique<Implementation>(folder, certifiedName))
{}

TlsServer::~TlsServer() = default;

QUrl TlsServer::url(const QString& host) const
{
    return QUrl(u"https://%1:%2/api"_s.arg(host).arg(implementation->port));
}

QString TlsServer::authorityFile() const
{
    return implementation->authority;
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
