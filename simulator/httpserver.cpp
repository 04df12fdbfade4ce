// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/httpserver.h"

#include "simulator/connections.h"
#include "simulator/text.h"
#include "simulator/wirefaults.h"

#include <QDateTime>
#include <QFile>
#include <QLocale>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <httplib.h>
#include <system_error>
#include <thread>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr size_t threads = 64;
constexpr int backlog = 128;
constexpr time_t keepAliveSeconds = 60;
constexpr size_t keepAliveRequests = 1'000'000'000;
constexpr time_t readSeconds = 30;
constexpr std::chrono::seconds longestStop(5);
constexpr std::chrono::milliseconds pause(2);
constexpr size_t drainLimit = 16 * HttpServer::maximumBody;

/// Reads a body. What is too large is read to its end as far as that is bearable, so that the
/// connection stays usable and the client sees the answer. Returns 0 or the status to answer.
int readBody(const httplib::Request& from, const httplib::ContentReader& reader, QByteArray& body)
{
    if (from.is_multipart_form_data()) {
        reader([](const httplib::MultipartFormData&) { return true; },
               [](const char*, size_t) { return true; });
        return 415;
    }
    size_t size = 0;
    const bool complete = reader([&](const char* data, size_t length) {
        size += length;
        if (size <= HttpServer::maximumBody) {
            body.append(data, static_cast<qsizetype>(length));
        }
        return size <= drainLimit;
    });
    if (size > HttpServer::maximumBody) {
        return 413;
    }
    return complete ? 0 : 400;
}

Answer bodyRefusal(int status)
{
    switch (status) {
    case 413:
        return refusal(status, u"The body is larger than 16 MiB"_s);
    case 415:
        return refusal(status, u"The body must be an XML document, not a form"_s);
    default:
        return refusal(status, u"The body ended before its declared length or is garbled"_s);
    }
}

/// As HTTP writes it, so that a till can hold its clock against it.
std::string presentDate()
{
    return QLocale::c()
        .toString(QDateTime::currentDateTimeUtc(), u"ddd, dd MMM yyyy hh:mm:ss 'GMT'"_s)
        .toStdString();
}

Request requestOf(const httplib::Request& from)
{
    Request request;
    request.method = QByteArray::fromStdString(from.method);
    request.path = QByteArray::fromStdString(from.path);
    request.authorization = QByteArray::fromStdString(from.get_header_value("Authorization"));
    return request;
}

std::unique_ptr<httplib::Server> makeServer(const HttpServer::Certificate& certificate)
{
    if (certificate.file.isEmpty()) {
        return std::make_unique<httplib::Server>();
    }
    auto server =
        std::make_unique<httplib::SSLServer>(QFile::encodeName(certificate.file).constData(),
                                             QFile::encodeName(certificate.keyFile).constData());
    if (!server->is_valid()) {
        throw ListenError(
            Text::tr("The certificate %1 with the key %2 cannot be used: both must be PEM files "
                     "that belong together")
                .arg(certificate.file, certificate.keyFile));
    }
    return server;
}

} // namespace

class HttpServer::Implementation
{
public:
    Implementation(const QString& address, int port, Handler requestHandler,
                   Observer requestObserver, const Certificate& certificate)
        : host(address), isSecure(!certificate.file.isEmpty()), handler(std::move(requestHandler)),
          observer(std::move(requestObserver)), server(makeServer(certificate))
    {
        configure();
        addRoutes();
        bind(port);
        listener = std::thread([this] { server->listen_after_bind(); });
        while (!server->is_running()) { // a stop before that would be lost
            std::this_thread::sleep_for(pause);
        }
    }

    ~Implementation()
    {
        std::atomic<bool> done = false;
        std::thread closer([this, &done] {
            server->stop();
            faults.stop();
            waitForAnswers();
            // idle connections would be waited for until their time is over
            while (!done) {
                stopReading(boundPort);
                std::this_thread::sleep_for(pause);
            }
        });
        listener.join();
        done = true;
        closer.join();
    }

    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;

    [[nodiscard]] int port() const { return boundPort; }
    [[nodiscard]] QString url() const
    {
        return u"%1://%2:%3/"_s
            .arg(isSecure ? u"https"_s : u"http"_s, host.contains(u':') ? u'[' + host + u']' : host)
            .arg(boundPort);
    }

private:
    void configure()
    {
        server->new_task_queue = [] { return new httplib::ThreadPool(threads); };
        server->set_keep_alive_max_count(keepAliveRequests);
        server->set_keep_alive_timeout(keepAliveSeconds);
        server->set_read_timeout(readSeconds);
        server->set_tcp_nodelay(true);
        // the library would share the port with another server that listens at it
        server->set_socket_options([this](socket_t socket) {
            const int yes = 1;
            ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
            listening = socket;
        });
    }

    void addRoutes()
    {
        const std::string any = ".*";
        const auto withBody = [this](const httplib::Request& from, httplib::Response& to,
                                     const httplib::ContentReader& reader) {
            countUntilSent(to);
            Request request = requestOf(from);
            const int status = readBody(from, reader, request.body);
            send(request, status == 0 ? handler(request) : bodyRefusal(status), from, to);
        };
        const auto withoutBody = [this](const httplib::Request& from, httplib::Response& to) {
            countUntilSent(to);
            const Request request = requestOf(from);
            send(request, handler(request), from, to);
        };
        server->Post(any, withBody);
        server->Put(any, withBody);
        server->Patch(any, withBody);
        server->Delete(any, withBody);
        server->Get(any, withoutBody);
        server->Options(any, withoutBody);
    }

    void send(const Request& request, const Answer& answer, const httplib::Request& from,
              httplib::Response& to)
    {
        to.status = answer.status;
        to.set_header("Date", presentDate());
        if (answer.status == 401) {
            to.set_header("WWW-Authenticate", "Basic realm=\"orva-simulator\"");
        }
        if (answer.status == 405) {
            to.set_header("Allow", "POST");
        }
        if (!answer.location.isEmpty()) {
            to.set_header("Location", answer.location.toStdString());
        }
        to.set_content(answer.body.toStdString(), answer.contentType.toStdString());
        if (observer) {
            observer(request, answer);
        }
        faults.apply(answer, from, boundPort, to);
    }

    /// Counts the exchange until its response is destroyed, which is after it was sent.
    void countUntilSent(httplib::Response& to)
    {
        ++underWay;
        const std::shared_ptr<void> atEnd(nullptr, [this](void*) { --underWay; });
        to.content_provider_resource_releaser_ = [atEnd](bool) {};
    }

    void waitForAnswers() const
    {
        const auto deadline = std::chrono::steady_clock::now() + longestStop;
        while (underWay > 0 && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(pause);
        }
    }

    void bind(int port)
    {
        const std::string name = host.toStdString();
        errno = 0;
        if (port == 0) {
            boundPort = server->bind_to_any_port(name);
        } else {
            boundPort = server->bind_to_port(name, port) ? port : -1;
        }
        if (boundPort <= 0) {
            throw ListenError(
                Text::tr("Cannot listen at %1, port %2: %3; choose another with --listen or --port")
                    .arg(host)
                    .arg(port)
                    .arg(errno == 0
                             ? Text::tr("no such address")
                             : QString::fromStdString(std::generic_category().message(errno))));
        }
        // the library's own queue of five would make tills that connect together wait a second
        ::listen(listening, backlog);
    }

    const QString host;
    const bool isSecure;
    const Handler handler;
    const Observer observer;
    std::atomic<int> underWay = 0; // these before the server, whose threads use them
    WireFaults faults;
    const std::unique_ptr<httplib::Server> server;
    socket_t listening = INVALID_SOCKET;
    int boundPort = 0;
    std::thread listener;
};

HttpServer::HttpServer(const QString& address, int port, Handler handler, Observer observer,
                       const Certificate& certificate)
    : implementation(std::make_unique<Implementation>(address, port, std::move(handler),
                                                      std::move(observer), certificate))
{}

HttpServer::~HttpServer() = default;

int HttpServer::port() const
{
    return implementation->port();
}

QString HttpServer::url() const
{
    return implementation->url();
}

} // namespace simulator
