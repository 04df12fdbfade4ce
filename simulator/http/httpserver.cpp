// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/httpserver.h"

#include "simulator/documents/rejection.h"
#include "simulator/http/connections.h"
#include "simulator/http/listener.h"
#include "simulator/http/memorybudget.h"
#include "simulator/http/requestreader.h"
#include "simulator/http/response.h"
#include "simulator/http/wirefaults.h"
#include "simulator/text.h"

#include <QFile>

#include <algorithm>
#include <malloc.h>
#include <openssl/ssl.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

constexpr size_t mostConnections = 64;
constexpr seconds keepAlive(60);
constexpr seconds longestArrival(60);
constexpr seconds longestFarewell(10);
constexpr seconds longestStop(5);
constexpr milliseconds longestQueue(30'000);
constexpr milliseconds pause(2);
/// How often an answer without an end is asked for what has come.
constexpr milliseconds betweenPieces(200);

/// What all bodies may take while they arrive and until they are answered.
constexpr qint64 bodiesTogether = 2 * HttpServer::maximumBody;
/// What may become of bodies while they are handled.
constexpr qint64 documentsTogether = 200 * 1024 * 1024;
/// From here on what a document took is given back to the system.
constexpr qint64 largeDocument = 16 * 1024 * 1024;
/// A body up to this size never waits for room. Where it is refused it is read to its end, so that
/// the connection stays usable.
constexpr qint64 smallBody = 64 * 1024;
/// How much of a larger refused one is read, so that a client that sends first and reads then sees
/// why.
constexpr quint64 drainedBody = 256 * 1024 * 1024;

using Tls = std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)>;

Tls makeTls(const HttpServer::Certificate& certificate)
{
    Tls tls(nullptr, &SSL_CTX_free);
    if (certificate.file.isEmpty()) {
        return tls;
    }
    tls.reset(SSL_CTX_new(TLS_server_method()));
    SSL_CTX_set_min_proto_version(tls.get(), TLS1_2_VERSION);
    SSL_CTX_set_mode(tls.get(),
                     SSL_MODE_ENABLE_PARTIAL_WRITE | SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
    const QByteArray file = QFile::encodeName(certificate.file);
    const QByteArray keyFile = QFile::encodeName(certificate.keyFile);
    if (SSL_CTX_use_certificate_chain_file(tls.get(), file.constData()) != 1 ||
        SSL_CTX_use_PrivateKey_file(tls.get(), keyFile.constData(), SSL_FILETYPE_PEM) != 1 ||
        SSL_CTX_check_private_key(tls.get()) != 1) {
        throw ListenError(
            Text::tr("The certificate %1 with the key %2 cannot be used: both must be PEM files "
                     "that belong together")
                .arg(certificate.file, certificate.keyFile));
    }
    return tls;
}

/// What becomes of a body while it is handled, roughly: its text, and an object for each element.
qint64 memoryFor(const QByteArray& body)
{
    constexpr qint64 bytesPerByte = 12;
    constexpr qint64 bytesPerTag = 250;
    return bytesPerByte * body.size() + bytesPerTag * std::count(body.begin(), body.end(), '<');
}

/// Notes that a request is being answered as long as it lives.
class Busy
{
public:
    explicit Busy(Channel& answering) : channel(answering) { channel.isBusy = true; }
    ~Busy() { channel.isBusy = false; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    Channel& channel;
};

} // namespace

class HttpServer::Implementation
{
    /// What comes after an answer.
    enum class After
    {
        Next,     ///< the next request
        Nothing,  ///< the connection ends
        Farewell, ///< it ends, but the client may still be sending and must see the answer first
    };

public:
    Implementation(const QString& address, int port, Handler requestHandler,
                   Observer requestObserver, const Certificate& certificate, BodyLimit limit)
        : host(address), handler(std::move(requestHandler)), observer(std::move(requestObserver)),
          bodyLimit(std::move(limit)), tls(makeTls(certificate)), listener(address, port),
          connections(mostConnections, [this](Channel& channel) { serve(channel); }),
          acceptor([this] { acceptAll(); })
    {}

    ~Implementation()
    {
        ending = true;
        listener.stop();
        faults.stop();
        connections.finish(longestStop);
        acceptor.join();
    }

    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;

    [[nodiscard]] int port() const { return listener.port(); }
    [[nodiscard]] QString url() const
    {
        return u"%1://%2:%3/"_s
            .arg(tls ? u"https"_s : u"http"_s, host.contains(u':') ? u'[' + host + u']' : host)
            .arg(port());
    }

private:
    void acceptAll()
    {
        while (connections.waitForRoom()) {
            if (const std::optional<int> connected = listener.accept()) {
                connections.add(std::make_unique<Channel>(*connected, tls.get()));
            } else {
                std::this_thread::sleep_for(pause); // out of descriptors, or it is the end
            }
        }
    }

    /// Answers the requests of a connection until it ends.
    void serve(Channel& channel)
    {
        if (!channel.greet(steady_clock::now() + longestArrival)) {
            return;
        }
        RequestReader reader(channel);
        const quint64 number = ++lastConnection;
        After after = After::Next;
        while (after == After::Next && !ending &&
               reader.waitForRequest(steady_clock::now() + keepAlive)) {
            after = exchange(channel, reader, number);
        }
        if (after == After::Farewell && !ending) {
            channel.finishWriting();
            reader.skip(drainedBody, steady_clock::now() + longestFarewell);
        }
    }

    /// Answers one request. number: of the connection
    After exchange(Channel& channel, RequestReader& reader, quint64 number)
    {
        const auto until = steady_clock::now() + longestArrival;
        std::optional<RequestHead> head;
        try {
            head = reader.readHead(until);
            if (!head) {
                return After::Nothing;
            }
            head->request.connection = number;
            const Busy busy(channel);
            const qsizetype limit = bodyLimit ? bodyLimit(head->request) : maximumBody;
            if (head->hasBody() && limit == 0) {
                return refuseUnread(*head, channel, reader, until);
            }
            const MemoryBudget::Share share = shareFor(*head);
            Request request = head->request;
            request.body = reader.readBody(*head, limit, until);
            const Answer answer = handle(request);
            observe(request, answer);
            request.body.clear();
            return send(request, answer, head->closes ? After::Nothing : After::Next, channel);
        } catch (const Rejection& rejection) {
            return refuse(head, refusal(rejection.status, rejection.reason), channel);
        } catch (const std::exception& error) {
            return refuse(head, refusal(500, QString::fromUtf8(error.what())), channel);
        }
    }

    /// Room for the body as long as it and its answer are there.
    MemoryBudget::Share shareFor(const RequestHead& head)
    {
        if (head.isForm) {
            throw Rejection(415, u"The body must be an XML document, not a form"_s);
        }
        const qint64 size =
            head.isChunked
                ? maximumBody
                : static_cast<qint64>(std::min<quint64>(head.length.value_or(0), maximumBody));
        return shareOf(bodies, size, size);
    }

    /// Room for a request; one with a small body never waits for it.
    static MemoryBudget::Share shareOf(MemoryBudget& budget, qint64 need, qint64 size)
    {
        if (size <= smallBody) {
            return {};
        }
        MemoryBudget::Share share = budget.take(need, longestQueue);
        if (!share) {
            throw Rejection(503, u"The server is busy with large requests"_s);
        }
        return share;
    }

    Answer handle(const Request& request)
    {
        const qint64 need = memoryFor(request.body);
        const MemoryBudget::Share share = shareOf(documents, need, request.body.size());
        Answer answer = handler(request);
        if (need >= largeDocument) {
            ::malloc_trim(0); // the allocator would keep it, for each thread anew
        }
        return answer;
    }

    void observe(const Request& request, const Answer& answer) const
    {
        if (observer) {
            observer(request, answer);
        }
    }

    /// Answers a request of which no more is read, as far as it was.
    After refuse(const std::optional<RequestHead>& head, const Answer& answer, Channel& channel)
    {
        const Busy busy(channel);
        const Request request = head ? head->request : Request();
        observe(request, answer);
        return send(request, answer, After::Farewell, channel);
    }

    /// Answers a request whose body nobody wants to see.
    After refuseUnread(const RequestHead& head, Channel& channel, RequestReader& reader,
                       Channel::Deadline until)
    {
        const bool isSmall = !head.isChunked && !head.asksFirst && *head.length <= smallBody;
        const bool isSkipped = isSmall && reader.skip(*head.length, until);
        const Answer answer = handler(head.request);
        observe(head.request, answer);
        return send(head.request, answer,
                    !isSkipped    ? After::Farewell
                    : head.closes ? After::Nothing
                                  : After::Next,
                    channel);
    }

    /// Sends an answer. Returns what comes after it, nothing when it could not be sent.
    After send(const Request& request, const Answer& answer, After after, Channel& channel)
    {
        if (answer.stream && request.method != "HEAD") {
            return sendStream(request, answer, channel);
        }
        const Response response = responseFor(answer, request.method, after != After::Next);
        const bool goesOn = faults.send(response, answer.fault, channel) && !answer.closesUnsaid;
        return goesOn ? after : After::Nothing;
    }

    /// Sends what comes of an answer without an end, until the client goes or the server ends. The
    /// answer is asked and not told, so one that is slow to read keeps nobody waiting.
    After sendStream(const Request& request, const Answer& answer, Channel& channel)
    {
        const Response response = responseFor(answer, request.method, true);
        bool goesOn = channel.write(response.opening + "\r\n" + response.body);
        while (goesOn) {
            const std::optional<QByteArray> piece = answer.stream();
            goesOn = piece && channel.write(*piece) && faults.wait(channel, betweenPieces);
        }
        return After::Nothing;
    }

    const QString host;
    const Handler handler;
    const Observer observer;
    const BodyLimit bodyLimit;
    const Tls tls;
    const Listener listener;
    std::atomic<bool> ending = false;
    std::atomic<quint64> lastConnection = 0;
    WireFaults faults; // these before the connections, whose threads use them
    MemoryBudget bodies{bodiesTogether};
    MemoryBudget documents{documentsTogether};
    Connections connections;
    std::thread acceptor;
};

HttpServer::HttpServer(const QString& address, int port, Handler handler, Observer observer,
                       const Certificate& certificate, BodyLimit limit)
    : implementation(std::make_unique<Implementation>(
          address, port, std::move(handler), std::move(observer), certificate, std::move(limit)))
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
