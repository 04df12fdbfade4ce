// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/http/transporterror_p.h"

#include <cstring>

namespace poshost {

using namespace Qt::StringLiterals;

namespace transporterror {

namespace {

tr::Tr transport(const QString& host, const Message& what)
{
    return {u"restTransportError"_s, Message::of("transport", host, what)};
}

QString inBrackets(const QString& detail)
{
    return detail.isEmpty() ? QString() : u" (%1)"_s.arg(detail);
}

QString inBrackets(int osError)
{
    return osError == 0 ? QString() : inBrackets(QString::fromLocal8Bit(std::strerror(osError)));
}

Message cause(CURLcode code, const QString& detail, int osError)
{
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return Message::of("transport.noName");
    case CURLE_COULDNT_RESOLVE_PROXY:
        return Message::of("transport.noProxyName");
    case CURLE_COULDNT_CONNECT:
        return Message::of("transport.noConnection", inBrackets(osError));
    case CURLE_OPERATION_TIMEDOUT:
        return Message::of("transport.noAnswer");
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
        return Message::of("transport.cut");
    case CURLE_SEND_ERROR:
        return Message::of("transport.cutWhileSending");
    case CURLE_GOT_NOTHING:
        return Message::of("transport.closed");
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
        return Message::of("transport.notHttp");
    case CURLE_SSL_CACERT_BADFILE:
        return Message::of("transport.caFile");
    case CURLE_PEER_FAILED_VERIFICATION:
        return Message::of("transport.noTrust", inBrackets(detail));
    case CURLE_SSL_CONNECT_ERROR:
        return Message::of("transport.notSecure", inBrackets(detail));
    case CURLE_ABORTED_BY_CALLBACK:
        return Message::of("transport.aborted");
    case CURLE_OUT_OF_MEMORY:
        return Message::of("transport.noMemory");
    default:
        return Message::of("transport.other",
                           inBrackets(QString::fromLatin1(curl_easy_strerror(code))));
    }
}

} // namespace

tr::Tr fromCurl(CURLcode code, const QString& host, const QString& detail, int osError)
{
    return transport(host, cause(code, detail, osError));
}

tr::Tr fromStatus(int status, const QString& host)
{
    return {u"restHttpStatus"_s, Message::of("transport.status", host, status)};
}

tr::Tr notFinal(int status, const QString& host)
{
    return transport(host, Message::of("transport.notFinal", status));
}

tr::Tr fromProxy(int status, const QString& host)
{
    return transport(host, Message::of("transport.proxyRefuses", status));
}

tr::Tr proxyAway(const QString& host, int osError)
{
    return transport(host, Message::of("transport.proxyAway", inBrackets(osError)));
}

tr::Tr headersTooLarge(const QString& host)
{
    return transport(host, Message::of("transport.headersTooLarge"));
}

tr::Tr answerTooLarge(const QString& host, qint64 limitBytes)
{
    return transport(host, Message::of("transport.answerTooLarge", limitBytes));
}

tr::Tr badAddress()
{
    return {u"restAddressError"_s, Message::of("transport.badAddress")};
}

tr::Tr badHeader(const QString& name)
{
    return {u"restHeaderError"_s, Message::of("transport.badHeader", name)};
}

} // namespace transporterror

} // namespace poshost
