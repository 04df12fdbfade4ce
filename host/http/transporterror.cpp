// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/http/transporterror_p.h"

#include <cstring>

namespace poshost {

using namespace Qt::StringLiterals;

namespace transporterror {

namespace {

tr::Tr transport(const QString& host, const QString& what)
{
    return {u"restTransportError"_s, u"Сервер %1: %2"_s.arg(host, what)};
}

QString inBrackets(const QString& detail)
{
    return detail.isEmpty() ? QString() : u" (%1)"_s.arg(detail);
}

QString inBrackets(int osError)
{
    return osError == 0 ? QString() : inBrackets(QString::fromLocal8Bit(std::strerror(osError)));
}

QString cause(CURLcode code, const QString& detail, int osError)
{
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return u"имя не найдено, проверьте адрес и сеть"_s;
    case CURLE_COULDNT_RESOLVE_PROXY:
        return u"не найдено имя прокси, проверьте http.proxy"_s;
    case CURLE_COULDNT_CONNECT:
        return u"нет соединения%1"_s.arg(inBrackets(osError));
    case CURLE_OPERATION_TIMEDOUT:
        return u"нет ответа за отведённое время"_s;
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
        return u"соединение прервано, ответ пришёл не целиком"_s;
    case CURLE_SEND_ERROR:
        return u"соединение прервано при отправке"_s;
    case CURLE_GOT_NOTHING:
        return u"соединение закрыто без ответа"_s;
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
        return u"ответ не по протоколу HTTP"_s;
    case CURLE_SSL_CACERT_BADFILE:
        return u"не читается файл сертификатов, проверьте http.caFile"_s;
    case CURLE_PEER_FAILED_VERIFICATION:
        return u"сертификату сервера нет доверия%1"_s.arg(inBrackets(detail));
    case CURLE_SSL_CONNECT_ERROR:
        return u"не удалось защищённое соединение%1"_s.arg(inBrackets(detail));
    case CURLE_ABORTED_BY_CALLBACK:
        return u"запрос прерван"_s;
    case CURLE_OUT_OF_MEMORY:
        return u"не хватает памяти"_s;
    default:
        return u"ошибка обмена%1"_s.arg(inBrackets(QString::fromLatin1(curl_easy_strerror(code))));
    }
}

} // namespace

tr::Tr fromCurl(CURLcode code, const QString& host, const QString& detail, int osError)
{
    return transport(host, cause(code, detail, osError));
}

tr::Tr fromStatus(int status, const QString& host)
{
    return {u"restHttpStatus"_s, u"Сервер %1: ответ HTTP %2"_s.arg(host).arg(status)};
}

tr::Tr notFinal(int status, const QString& host)
{
    return transport(host, u"ответ HTTP %1 не завершает запрос"_s.arg(status));
}

tr::Tr fromProxy(int status, const QString& host)
{
    return transport(host, u"прокси не пропускает (HTTP %1), проверьте http.proxy"_s.arg(status));
}

tr::Tr proxyAway(const QString& host, int osError)
{
    return transport(host,
                     u"нет соединения с прокси%1, проверьте http.proxy"_s.arg(inBrackets(osError)));
}

tr::Tr headersTooLarge(const QString& host)
{
    return transport(
        host, u"заголовки ответа больше допустимых 256 КиБ или один из них длиннее 100 КиБ"_s);
}

tr::Tr answerTooLarge(const QString& host, qint64 limitBytes)
{
    return transport(host, u"ответ больше допустимых %1 байт"_s.arg(limitBytes));
}

tr::Tr badAddress()
{
    return {
        u"restAddressError"_s,
        u"Адрес сервера не задан или записан с ошибкой: нужен http:// или https://, имя и путь"_s};
}

tr::Tr badHeader(const QString& name)
{
    return {u"restHeaderError"_s,
            u"Заголовок %1 содержит недопустимые знаки, запрос не отправлен"_s.arg(name)};
}

} // namespace transporterror

} // namespace poshost
