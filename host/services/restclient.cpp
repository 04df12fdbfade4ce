// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/restclient.h"

#include "host/http/curlpool_p.h"
#include "host/http/httpstatus_p.h"
#include "host/http/operationbudget.h"
#include "host/http/refusallistener.h"
#include "host/http/sigpipeguard_p.h"
#include "host/http/transporterror_p.h"
#include "host/http/transportsettings_p.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <new>
#include <string_view>

template class MockFactory<RestClient>;

using namespace Qt::StringLiterals;

namespace {

constexpr int maxTimeoutSeconds = std::numeric_limits<int>::max() / 1000;
constexpr qsizetype maxHeaderBytes = 256 * 1024;
constexpr int switchingProtocols = 101;

/// What libcurl's callbacks gather during one exchange.
struct Exchange
{
    QByteArray body;
    QByteArray headers;
    qsizetype headerBytes = 0;
    qsizetype maxBodyBytes = 0;
    int sendCount = 0;
    bool tooLarge = false;
    bool headersTooLarge = false;
    bool outOfMemory = false;
    bool headersAreWhole = false;
    const std::atomic<bool>* aborted = nullptr;
};

/// Keeps bytes. No exception may pass through libcurl, which is C.
bool keep(Exchange& exchange, QByteArray& kept, const char* data, qsizetype length)
{
    try {
        kept.append(data, length);
        return true;
    } catch (const std::bad_alloc&) {
        exchange.outOfMemory = true;
        return false;
    }
}

size_t takeBody(const char* data, size_t size, size_t count, void* user)
{
    auto& exchange = *static_cast<Exchange*>(user);
    const auto length = static_cast<qsizetype>(size) * static_cast<qsizetype>(count);
    if (length > exchange.maxBodyBytes - exchange.body.size()) {
        exchange.tooLarge = true;
        return 0;
    }
    return keep(exchange, exchange.body, data, length) ? size * count : 0;
}

size_t takeHeader(const char* data, size_t size, size_t count, void* user)
{
    auto& exchange = *static_cast<Exchange*>(user);
    const std::string_view line(data, size * count);
    exchange.headerBytes += static_cast<qsizetype>(line.size());
    if (exchange.headerBytes > maxHeaderBytes) {
        exchange.headersTooLarge = true;
        return 0;
    }
    if (line.starts_with("HTTP/")) {
        exchange.headers.clear(); // an interim answer came before
        exchange.headersAreWhole = false;
    } else if (line == "\r\n" || line == "\n") {
        exchange.headersAreWhole = true;
    } else if (!keep(exchange, exchange.headers, line.data(),
                     static_cast<qsizetype>(line.size()))) {
        return 0;
    }
    return line.size();
}

int countSend(void* user, const char*, const char*, int, int)
{
    ++static_cast<Exchange*>(user)->sendCount;
    return CURL_PREREQFUNC_OK;
}

int checkAbort(void* user, curl_off_t, curl_off_t, curl_off_t, curl_off_t)
{
    return static_cast<const Exchange*>(user)->aborted->load() ? 1 : 0;
}

using HeaderList = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

void append(HeaderList& list, const QByteArray& line)
{
    curl_slist* const longer = curl_slist_append(list.get(), line.constData());
    if (longer != nullptr) {
        static_cast<void>(list.release());
        list.reset(longer);
    }
}

bool isSendable(const QString& text)
{
    return std::none_of(text.begin(), text.end(),
                        [](QChar c) { return c.unicode() < u' ' && c != u'\t'; });
}

/// libcurl adds headers of its own; "Name:" tells it not to.
HeaderList headerList(const QHash<QString, QString>& headers)
{
    HeaderList list(nullptr, &curl_slist_free_all);
    append(list, "Expect:");
    bool hasContentType = false;
    for (auto it = headers.cbegin(); it != headers.cend(); ++it) {
        hasContentType =
            hasContentType || it.key().compare("Content-Type"_L1, Qt::CaseInsensitive) == 0;
        append(list, it.key().toUtf8() + (it->isEmpty() ? QByteArray(";") : ": " + it->toUtf8()));
    }
    if (!hasContentType) {
        append(list, "Content-Type:");
    }
    return list;
}

void setCallbacks(CURL* handle, Exchange& exchange)
{
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, takeBody);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &exchange);
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, takeHeader);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, &exchange);
    curl_easy_setopt(handle, CURLOPT_PREREQFUNCTION, countSend);
    curl_easy_setopt(handle, CURLOPT_PREREQDATA, &exchange);
    curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, checkAbort);
    curl_easy_setopt(handle, CURLOPT_XFERINFODATA, &exchange);
}

void setRequest(CURL* handle, const QByteArray& address, const QByteArray& body, long milliseconds)
{
    curl_easy_setopt(handle, CURLOPT_URL, address.constData());
    curl_easy_setopt(handle, CURLOPT_POST, 1L);
    curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, body.constData());
    curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, milliseconds);
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, milliseconds);
}

CURLcode send(CURL* handle)
{
    const poshost::SigPipeGuard guard;
    return curl_easy_perform(handle);
}

/// libcurl gives up a single header that is too long as if memory had run out, or with a code of
/// its own where it is newer.
bool isHeaderTooLong(CURL* handle, CURLcode code, const Exchange& exchange)
{
    constexpr int tooLargeInNewerOnes = 100;
    curl_off_t answeredAfter = 0;
    curl_easy_getinfo(handle, CURLINFO_STARTTRANSFER_TIME_T, &answeredAfter);
    return answeredAfter > 0 && !exchange.headersAreWhole &&
           (code == CURLE_OUT_OF_MEMORY || static_cast<int>(code) == tooLargeInNewerOnes);
}

/// What ended an exchange that did not succeed.
tr::Tr troubleOf(CURL* handle, CURLcode code, const QString& host, const Exchange& exchange,
                 const poshost::TransportSettings& settings, const QString& detail)
{
    if (exchange.outOfMemory) {
        return poshost::transporterror::fromCurl(CURLE_OUT_OF_MEMORY, host, {}, 0);
    }
    if (exchange.tooLarge) {
        return poshost::transporterror::answerTooLarge(host, settings.maxAnswerBytes);
    }
    if (exchange.headersTooLarge || isHeaderTooLong(handle, code, exchange)) {
        return poshost::transporterror::headersTooLarge(host);
    }
    long lastStatus = 0;
    curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &lastStatus);
    if (lastStatus == switchingProtocols) { // what follows is no HTTP any more
        return poshost::transporterror::notFinal(switchingProtocols, host);
    }
    long proxyStatus = 0;
    curl_easy_getinfo(handle, CURLINFO_HTTP_CONNECTCODE, &proxyStatus);
    if (proxyStatus >= poshost::httpstatus::firstError) {
        return poshost::transporterror::fromProxy(static_cast<int>(proxyStatus), host);
    }
    long osError = 0;
    curl_easy_getinfo(handle, CURLINFO_OS_ERRNO, &osError);
    if (code == CURLE_COULDNT_CONNECT && !settings.proxy.isEmpty()) {
        return poshost::transporterror::proxyAway(host, static_cast<int>(osError));
    }
    return poshost::transporterror::fromCurl(code, host, detail, static_cast<int>(osError));
}

bool isUsable(const QUrl& url)
{
    const QString scheme = url.scheme();
    return url.isValid() && !url.host().isEmpty() && (scheme == "http"_L1 || scheme == "https"_L1);
}

} // namespace

RestClient::RestClient() = default;

RestClient::~RestClient() = default;

void RestClient::post(const QUrl& url, const QByteArray& body,
                      const QHash<QString, QString>& headers)
{
    error = 0;
    status = 0;
    sendCount = 0;
    errorText = tr::Tr();
    response.clear();
    responseHeaders.clear();
    if (!isUsable(url)) {
        fail(CURLE_URL_MALFORMAT, poshost::transporterror::badAddress());
        return;
    }
    for (auto it = headers.cbegin(); it != headers.cend(); ++it) {
        if (it.key().isEmpty() || !isSendable(it.key()) || !isSendable(*it)) {
            fail(CURLE_BAD_FUNCTION_ARGUMENT, poshost::transporterror::badHeader(it.key()));
            return;
        }
    }
    const int seconds = timeoutSeconds > 0 ? timeoutSeconds : defaultTimeoutSeconds;
    poshost::BudgetedRequest request(url,
                                     std::chrono::seconds(std::min(seconds, maxTimeoutSeconds)));
    if (request.allowed().count() == 0) {
        fail(CURLE_OPERATION_TIMEDOUT,
             poshost::transporterror::fromCurl(CURLE_OPERATION_TIMEDOUT, url.host(), {}, 0));
        return;
    }
    const poshost::CurlHandle handle(poshost::TransportSettings::read().wayTo(url));
    if (handle.get() == nullptr) {
        fail(CURLE_FAILED_INIT,
             poshost::transporterror::fromCurl(CURLE_OUT_OF_MEMORY, url.host(), {}, 0));
        return;
    }
    perform(handle.get(), url, body, headers, static_cast<long>(request.allowed().count()));
    if (error == CURLE_OPERATION_TIMEDOUT) {
        request.timedOut();
    }
    const bool isRefusal = status >= poshost::httpstatus::firstError;
    poshost::RefusalListener::hear(
        status, response, isRefusal ? RestClient::getResponseHeader(u"Content-Type"_s) : QString());
}

void RestClient::perform(void* handle, const QUrl& url, const QByteArray& body,
                         const QHash<QString, QString>& headers, long milliseconds)
{
    const poshost::TransportSettings settings = poshost::TransportSettings::read();
    const QByteArray address = url.toEncoded();
    const HeaderList list = headerList(headers);
    std::array<char, CURL_ERROR_SIZE> detail{};
    Exchange exchange;
    exchange.maxBodyBytes = settings.maxAnswerBytes;
    exchange.aborted = &aborted;

    settings.applyTo(handle);
    setCallbacks(handle, exchange);
    setRequest(handle, address, body, milliseconds);
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, list.get());
    curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, detail.data());

    CURLcode code = send(handle);
    if (code == CURLE_OK && !exchange.headersAreWhole) {
        code = CURLE_PARTIAL_FILE; // libcurl takes a connection closed among the headers for an end
    }

    long httpStatus = 0;
    curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &httpStatus);
    status = httpStatus < poshost::httpstatus::firstFinal ? 0 : static_cast<int>(httpStatus);
    sendCount = exchange.sendCount;
    responseHeaders = exchange.headers;
    if (code != CURLE_OK) {
        fail(code, troubleOf(handle, code, url.host(), exchange, settings,
                             QString::fromUtf8(detail.data())));
    } else if (status == 0) {
        fail(CURLE_WEIRD_SERVER_REPLY,
             poshost::transporterror::notFinal(static_cast<int>(httpStatus), url.host()));
    } else {
        response = exchange.body;
        if (status >= poshost::httpstatus::firstError) {
            fail(status, poshost::transporterror::fromStatus(status, url.host()));
        }
    }
}

void RestClient::fail(int code, const tr::Tr& text)
{
    error = code;
    errorText = text;
}

int RestClient::getError()
{
    return error;
}

int RestClient::getHttpStatusCode()
{
    return status;
}

tr::Tr RestClient::getErrorText()
{
    return errorText;
}

QByteArray RestClient::getResponse()
{
    return response;
}

void RestClient::setTimeout(int seconds)
{
    timeoutSeconds = seconds;
}

QString RestClient::getResponseHeader(const QString& name)
{
    QString value;
    for (const QByteArray& line : responseHeaders.split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon >= 0 && name.compare(QLatin1StringView(line).first(colon).trimmed(),
                                       Qt::CaseInsensitive) == 0) {
            value = QLatin1StringView(line).sliced(colon + 1).trimmed().toString();
        }
    }
    return value; // the last one counts
}

int RestClient::getSendCount()
{
    return sendCount;
}

void RestClient::abort()
{
    aborted = true;
}
