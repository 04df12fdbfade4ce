// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/http/connectionprobe.h"

#include "host/http/curlpool_p.h"
#include "host/http/httpstatus_p.h"
#include "host/http/sigpipeguard_p.h"
#include "host/http/transporterror_p.h"
#include "host/http/transportsettings_p.h"

#include <QElapsedTimer>
#include <QLocale>
#include <QTimeZone>
#include <array>
#include <memory>
#include <sys/socket.h>
#include <unistd.h>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

using Trouble = ConnectionProbe::Trouble;

// OpenSSL's names for them need its headers
constexpr long certificateNotYetValid = 9;
constexpr long certificateHasExpired = 10;
constexpr long proxyRefusesAuthorization = 407;

long numberOf(CURL* handle, CURLINFO what)
{
    long value = 0;
    curl_easy_getinfo(handle, what, &value);
    return value;
}

bool isNameFound(CURL* handle)
{
    curl_off_t microseconds = 0;
    curl_easy_getinfo(handle, CURLINFO_NAMELOOKUP_TIME_T, &microseconds);
    return microseconds > 0;
}

/// Closes a socket and notes whether it was connected: libcurl tells so only of connections that
/// are secure as well.
int closeNoting(void* wasConnected, curl_socket_t socket)
{
    sockaddr_storage peer{};
    socklen_t length = sizeof peer;
    if (::getpeername(socket, reinterpret_cast<sockaddr*>(&peer), &length) == 0) {
        *static_cast<bool*>(wasConnected) = true;
    }
    return ::close(socket);
}

/// Where the time ran out.
Trouble slowStep(CURL* handle, bool throughProxy, bool wasConnected)
{
    if (!isNameFound(handle)) {
        return throughProxy ? Trouble::Proxy : Trouble::Name;
    }
    if (!wasConnected) {
        return throughProxy ? Trouble::Proxy : Trouble::Connection;
    }
    const bool proxyIsSilent = throughProxy && numberOf(handle, CURLINFO_HTTP_CONNECTCODE) == 0;
    return proxyIsSilent ? Trouble::Proxy : Trouble::Tls;
}

/// What a way ended at that led through a proxy and ended neither at a name nor at a certificate.
Trouble behindProxy(CURL* handle)
{
    const long answer = numberOf(handle, CURLINFO_HTTP_CONNECTCODE);
    if (answer < httpstatus::firstError) {
        return answer == 0 ? Trouble::Proxy : Trouble::Tls;
    }
    return answer == proxyRefusesAuthorization ? Trouble::Proxy : Trouble::Connection;
}

Trouble troubleOf(CURL* handle, CURLcode code, bool throughProxy, bool wasConnected)
{
    switch (code) {
    case CURLE_OK:
        return Trouble::None;
    case CURLE_COULDNT_RESOLVE_HOST:
        return Trouble::Name;
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_PROXY:
        return Trouble::Proxy;
    case CURLE_OPERATION_TIMEDOUT:
        return slowStep(handle, throughProxy, wasConnected);
    case CURLE_SSL_CACERT_BADFILE:
        return Trouble::CaFile;
    case CURLE_PEER_FAILED_VERIFICATION: {
        const long result = numberOf(handle, CURLINFO_SSL_VERIFYRESULT);
        return result == certificateNotYetValid || result == certificateHasExpired
                   ? Trouble::Validity
                   : Trouble::Certificate;
    }
    default:
        if (throughProxy) {
            return behindProxy(handle);
        }
        return code == CURLE_COULDNT_CONNECT ? Trouble::Connection : Trouble::Tls;
    }
}

/// When the first of the certificates that the server showed ends.
QDateTime earliestEnd(CURL* handle)
{
    const curl_certinfo* chain = nullptr;
    curl_easy_getinfo(handle, CURLINFO_CERTINFO, &chain);
    QDateTime earliest;
    for (int i = 0; chain != nullptr && i < chain->num_of_certs; ++i) {
        for (const curl_slist* line = chain->certinfo[i]; line != nullptr; line = line->next) {
            const QString text = QString::fromUtf8(line->data);
            if (!text.startsWith("Expire date:"_L1)) {
                continue;
            }
            const QString date = text.mid(text.indexOf(u':') + 1).simplified();
            QDateTime end = QLocale::c().toDateTime(date, u"MMM d hh:mm:ss yyyy 'GMT'"_s);
            end.setTimeZone(QTimeZone::utc());
            if (end.isValid() && (!earliest.isValid() || end < earliest)) {
                earliest = end;
            }
        }
    }
    return earliest;
}

CURLcode connectTo(CURL* handle, const QByteArray& address, const TransportSettings& settings,
                   int limitMilliseconds, std::array<char, CURL_ERROR_SIZE>& detail)
{
    settings.applyTo(handle);
    curl_easy_setopt(handle, CURLOPT_URL, address.constData());
    curl_easy_setopt(handle, CURLOPT_CONNECT_ONLY, 1L);
    curl_easy_setopt(handle, CURLOPT_CERTINFO, 1L);
    curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(limitMilliseconds));
    curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, detail.data());
    const SigPipeGuard guard;
    return curl_easy_perform(handle);
}

} // namespace

ConnectionProbe ConnectionProbe::of(const QUrl& url, int limitMilliseconds)
{
    QElapsedTimer clock;
    clock.start();
    const TransportSettings settings = TransportSettings::read();
    const QByteArray address = url.toEncoded(QUrl::RemoveUserInfo);
    std::array<char, CURL_ERROR_SIZE> detail{};
    bool wasConnected = false;
    CurlPool::instance(); // has set libcurl up
    // none out of the pool: its kept connection would spare the way that is to be gone
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle(curl_easy_init(),
                                                                     &curl_easy_cleanup);
    ConnectionProbe probe;
    if (handle == nullptr) {
        probe.trouble = Trouble::Connection;
        probe.text = transporterror::fromCurl(CURLE_OUT_OF_MEMORY, url.host(), {}, 0);
        return probe;
    }
    curl_easy_setopt(handle.get(), CURLOPT_CLOSESOCKETFUNCTION, closeNoting);
    curl_easy_setopt(handle.get(), CURLOPT_CLOSESOCKETDATA, &wasConnected);
    const CURLcode code = connectTo(handle.get(), address, settings, limitMilliseconds, detail);
    probe.trouble = troubleOf(handle.get(), code, !settings.proxy.isEmpty(), wasConnected);
    if (code != CURLE_OK) {
        probe.text =
            transporterror::fromCurl(code, url.host(), QString::fromUtf8(detail.data()),
                                     static_cast<int>(numberOf(handle.get(), CURLINFO_OS_ERRNO)));
    }
    const char* peer = nullptr;
    curl_easy_getinfo(handle.get(), CURLINFO_PRIMARY_IP, &peer);
    probe.peer = QString::fromUtf8(peer);
    probe.validUntil = earliestEnd(handle.get());
    probe.milliseconds = static_cast<int>(clock.elapsed());
    return probe;
}

} // namespace poshost
