// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/wire.h"

#include "till/failure.h"
#include "till/text.h"

#include <curl/curl.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

constexpr long upToVersion11 = long{CURL_SSLVERSION_TLSv1_0} + long{CURL_SSLVERSION_MAX_TLSv1_1};
constexpr qsizetype largestBody = 64 * 1024 * 1024;

struct Closing
{
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using Handle = std::unique_ptr<CURL, Closing>;

/// What goes out, as libcurl asks for it.
struct Source
{
    const Outgoing& request;
    qsizetype sent = 0;
};

size_t giveBody(char* target, size_t size, size_t count, void* given)
{
    auto& source = *static_cast<Source*>(given);
    const qsizetype left = source.request.body.size() - source.sent;
    const qsizetype piece = source.request.body.size() / source.request.pieces + 1;
    const qsizetype now = std::min({left, piece, qsizetype(size) * qsizetype(count)});
    if (now > 0 && source.request.pauseMilliseconds > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(source.request.pauseMilliseconds));
    }
    std::copy_n(source.request.body.constData() + source.sent, now, target);
    source.sent += now;
    return size_t(now);
}

size_t takeBody(char* data, size_t size, size_t count, void* taken)
{
    auto& body = *static_cast<QByteArray*>(taken);
    const auto bytes = qsizetype(size) * qsizetype(count);
    if (body.size() + bytes > largestBody) {
        return 0;
    }
    body.append(data, bytes);
    return size * count;
}

size_t takeHeader(char* data, size_t size, size_t count, void* taken)
{
    auto& headers = *static_cast<Outgoing::Headers*>(taken);
    const QByteArray line = QByteArray(data, qsizetype(size) * qsizetype(count)).trimmed();
    if (line.startsWith("HTTP/")) {
        headers.clear(); // of an interim answer
    } else if (const qsizetype colon = line.indexOf(':'); colon > 0) {
        headers.append({line.left(colon).trimmed(), line.mid(colon + 1).trimmed()});
    }
    return size * count;
}

void setUp(CURL* handle, const QByteArray& trusted, const QByteArray& way, int seconds)
{
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_TIMEOUT, long(seconds));
    curl_easy_setopt(handle, CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(handle, CURLOPT_PROXY, way.constData());
    if (!trusted.isEmpty()) {
        curl_easy_setopt(handle, CURLOPT_CAINFO, trusted.constData());
    }
}

Reply perform(CURL* handle, const Outgoing& request)
{
    Reply reply;
    Source source{request};
    std::unique_ptr<curl_slist, Closing> headers;
    const auto add = [&headers](const QByteArray& line) {
        headers.reset(curl_slist_append(headers.release(), line.constData()));
    };
    for (const auto& [name, value] : request.headers) {
        add(name + ": " + value);
    }
    add("Expect:");
    if (request.inChunks) {
        add("Transfer-Encoding: chunked");
    }
    curl_easy_setopt(handle, CURLOPT_URL, request.url.toEncoded().constData());
    if (request.method == "GET") {
        curl_easy_setopt(handle, CURLOPT_HTTPGET, 1L);
    } else {
        curl_easy_setopt(handle, CURLOPT_POST, 1L);
        curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE,
                         request.inChunks ? curl_off_t(-1) : curl_off_t(request.body.size()));
        curl_easy_setopt(handle, CURLOPT_READFUNCTION, giveBody);
        curl_easy_setopt(handle, CURLOPT_READDATA, &source);
    }
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, takeBody);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &reply.body);
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, takeHeader);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, &reply.headers);
    const CURLcode code = curl_easy_perform(handle);
    long status = 0;
    long connections = 0;
    double seconds = 0;
    curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(handle, CURLINFO_NUM_CONNECTS, &connections);
    curl_easy_getinfo(handle, CURLINFO_TOTAL_TIME, &seconds);
    reply.milliseconds = qint64(seconds * 1000);
    reply.connections = int(connections);
    if (code == CURLE_OK) {
        reply.status = int(status);
    } else {
        reply.trouble = QString::fromUtf8(curl_easy_strerror(code));
    }
    return reply;
}

QByteArray headOf(const Outgoing& request)
{
    const QString path = request.url.path(QUrl::FullyEncoded);
    QByteArray head = "POST " + (path.isEmpty() ? "/" : path.toLatin1()) +
                      " HTTP/1.1\r\nHost: " + request.url.authority(QUrl::FullyEncoded).toLatin1() +
                      "\r\nContent-Length: " + QByteArray::number(request.body.size()) + "\r\n";
    for (const auto& [name, value] : request.headers) {
        head += name + ": " + value + "\r\n";
    }
    return head + "\r\n";
}

} // namespace

Outgoing Outgoing::with(const QByteArray& name, const QByteArray& value) const
{
    Outgoing changed = *this;
    changed.headers.removeIf(
        [&](const auto& header) { return header.first.compare(name, Qt::CaseInsensitive) == 0; });
    if (!value.isNull()) {
        changed.headers.append({name, value});
    }
    return changed;
}

QByteArray Reply::header(const QByteArray& name) const
{
    for (auto it = headers.crbegin(); it != headers.crend(); ++it) {
        if (it->first.compare(name, Qt::CaseInsensitive) == 0) {
            return it->second;
        }
    }
    return {};
}

QDateTime Reply::dateIn(const QByteArray& name) const
{
    const time_t seconds = curl_getdate(header(name).constData(), nullptr);
    return seconds < 0 ? QDateTime() : QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}

QString Reply::shown() const
{
    return status != 0 ? QString::number(status) : trouble;
}

Wire::Wire(const QUrl& marked, const QByteArray& caFile, const QByteArray& proxy, int seconds)
    : address(marked), trusted(caFile), way(proxy), limitSeconds(seconds)
{}

void Wire::guard(const QUrl& url) const
{
    if (!url.toString().startsWith(address.toString())) {
        throw Failure(Text::tr("%1 is not below the address that is marked as meant for testing; "
                               "nothing was sent there.")
                          .arg(url.toDisplayString(QUrl::RemoveUserInfo | QUrl::RemoveQuery)));
    }
}

Reply Wire::send(const Outgoing& request) const
{
    return sendKept({request}).constFirst();
}

QList<Reply> Wire::sendKept(const QList<Outgoing>& requests) const
{
    const Handle handle(curl_easy_init());
    QList<Reply> replies;
    for (const Outgoing& request : requests) {
        guard(request.url);
        curl_easy_reset(handle.get()); // keeps connections
        setUp(handle.get(), trusted, way, limitSeconds);
        replies.append(perform(handle.get(), request));
    }
    return replies;
}

QList<Reply> Wire::sendTogether(const QList<Outgoing>& requests) const
{
    for (const Outgoing& request : requests) {
        guard(request.url);
    }
    QList<Reply> replies(requests.size());
    std::vector<std::jthread> threads;
    threads.reserve(size_t(requests.size()));
    Reply* const results = replies.data();
    for (qsizetype i = 0; i < requests.size(); ++i) {
        threads.emplace_back([this, &request = requests.at(i), &result = results[i]] {
            result = sendKept({request}).constFirst();
        });
    }
    threads.clear(); // waits
    return replies;
}

void Wire::sendAndLeave(const Outgoing& request) const
{
    guard(request.url);
    const Handle handle(curl_easy_init());
    setUp(handle.get(), trusted, way, limitSeconds);
    curl_easy_setopt(handle.get(), CURLOPT_URL, request.url.toEncoded().constData());
    curl_easy_setopt(handle.get(), CURLOPT_CONNECT_ONLY, 1L);
    if (curl_easy_perform(handle.get()) != CURLE_OK) {
        return;
    }
    const QByteArray all = headOf(request) + request.body;
    qsizetype sent = 0;
    for (int tries = 0; sent < all.size() && tries < limitSeconds * 100; ++tries) {
        size_t now = 0;
        const CURLcode code =
            curl_easy_send(handle.get(), all.constData() + sent, size_t(all.size() - sent), &now);
        sent += qsizetype(now);
        if (code == CURLE_AGAIN) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        } else if (code != CURLE_OK) {
            return;
        }
    }
}

Handshake Wire::shakeHands(Versions versions) const
{
    const Handle handle(curl_easy_init());
    setUp(handle.get(), trusted, way, limitSeconds);
    curl_easy_setopt(handle.get(), CURLOPT_URL, address.toEncoded().constData());
    curl_easy_setopt(handle.get(), CURLOPT_CONNECT_ONLY, 1L);
    if (versions == Versions::Old) {
        curl_easy_setopt(handle.get(), CURLOPT_SSLVERSION, upToVersion11);
        // whatever its certificate is worth: only the version is asked about
        curl_easy_setopt(handle.get(), CURLOPT_SSL_VERIFYPEER, 0L);
        curl_easy_setopt(handle.get(), CURLOPT_SSL_VERIFYHOST, 0L);
        // this machine's own rules may not refuse what is asked of the server here
        curl_easy_setopt(handle.get(), CURLOPT_SSL_CIPHER_LIST, "DEFAULT:@SECLEVEL=0");
    }
    const CURLcode code = curl_easy_perform(handle.get());
    return {code == CURLE_OK, QString::fromUtf8(curl_easy_strerror(code))};
}

} // namespace till::verify
