// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/faults/faultrow.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

using simulator::Fault;
using simulator::FaultKind;
using std::chrono::milliseconds;

namespace {

using enum poshost::QueueState;
using enum FaultKind;

constexpr const char* const noConnection = "Нет связи с сервером";
constexpr const char* const badAnswer = "Некорректный ответ от сервера";
constexpr const char* const badCredentials = "Ошибка авторизации на сервере";
constexpr const char* const duplicate = "Чек с таким идентификатором уже был обработан";
constexpr const char* const integrity = "Нарушение целостности данных";

constexpr const char* const late = "нет ответа за отведённое время";
constexpr const char* const cut = "соединение прервано, ответ пришёл не целиком";
constexpr const char* const silent = "соединение закрыто без ответа";
constexpr const char* const untrusted = "сертификату сервера нет доверия (*";
constexpr const char* const nothing = "";
constexpr const char* const asTransport = nullptr;
constexpr const char* const done = "";

const QByteArray page = "<html><body>Здесь ничего нет</body></html>";
const QByteArray sentence = "Так нельзя";

Fault plain(FaultKind kind)
{
    Fault fault;
    fault.kind = kind;
    return fault;
}

Fault answered(int status, const QByteArray& body = {}, FaultKind kind = Status)
{
    Fault fault = plain(kind);
    fault.status = status;
    fault.body = body;
    return fault;
}

Fault lasting(FaultKind kind, milliseconds duration)
{
    Fault fault = plain(kind);
    fault.duration = duration;
    return fault;
}

/// The certificate's fault is told by its body.
Fault certificate(const QByteArray& what)
{
    Fault fault = plain(WrongCertificate);
    fault.body = what;
    return fault;
}

std::vector<FaultRow> connectionRows()
{
    return {
        {"refused-connection", plain(RefusedConnection), noConnection, "нет соединения (*",
         asTransport, Waiting},
        {"hanging-resolution", plain(HangingResolution), noConnection, late, asTransport, Waiting},
        {"wrong-certificate-name", certificate("name"), noConnection, untrusted, asTransport,
         Waiting},
        {"wrong-certificate-authority", certificate("authority"), noConnection, untrusted,
         asTransport, Waiting},
        {"request-lost", plain(RequestLost), noConnection, silent, asTransport, Waiting},
        {"hang-before-headers", plain(HangBeforeHeaders), noConnection, late, asTransport, Waiting},
        {"reply-lost", plain(ReplyLost), noConnection, silent, asTransport, Waiting},
        {"delay", lasting(Delay, milliseconds(300)), nothing, nothing, done, Delivered},
        {"hang-after-headers", plain(HangAfterHeaders), noConnection, late, asTransport, Waiting},
        {"slow-drip", plain(SlowDrip), noConnection, late, asTransport, Waiting},
        {"cut-body", plain(CutBody), noConnection, cut, asTransport, Waiting},
        {"length-too-large", plain(LengthTooLarge), noConnection, late, asTransport, Waiting},
        // what is short of its end is no XML; a delivery does not read the answer
        {"length-too-small", plain(LengthTooSmall), badAnswer, nothing, done, Delivered},
        {"garbled-headers", plain(GarbledHeaders), noConnection, "ответ не по протоколу HTTP",
         asTransport, Waiting},
        {"garbled-body", plain(GarbledBody), badAnswer, nothing, done, Delivered},
        {"wrong-encoding", plain(WrongEncoding), badAnswer, nothing, done, Delivered},
        {"duplicated-delivery", plain(DuplicatedDelivery), nothing, nothing, done, Delivered},
        {"resent-by-proxy", plain(ResentByProxy), nothing, nothing, done, Delivered},
    };
}

constexpr const char* const moved301 =
    "HTTP 301: по этому адресу сервер не отвечает на запросы; проверьте serverUrl";
constexpr const char* const moved302 =
    "HTTP 302: по этому адресу сервер не отвечает на запросы; проверьте serverUrl";
constexpr const char* const moved307 =
    "HTTP 307: по этому адресу сервер не отвечает на запросы; проверьте serverUrl";
constexpr const char* const absent404 =
    "HTTP 404: по этому адресу сервер не отвечает на запросы; проверьте serverUrl";
constexpr const char* const refused400 =
    "HTTP 400: сервер отказал; посмотрите его ответ (queue show)";
constexpr const char* const refused424 =
    "HTTP 424: сервер отказал; посмотрите его ответ (queue show)";
constexpr const char* const credentials401 =
    "HTTP 401: сервер не принял учётные данные; исправьте их в настройках и замените в очереди "
    "(queue reauthorize)";
constexpr const char* const credentials403 =
    "HTTP 403: сервер не принял учётные данные; исправьте их в настройках и замените в очереди "
    "(queue reauthorize)";
constexpr const char* const known409 =
    "HTTP 409: чек с таким идентификатором уже был обработан; сверьте его с сервером и, "
    "если он там, закончите (queue settle)";

std::vector<FaultRow> statusRows()
{
    return {
        {"301", answered(301), badAnswer, nothing, moved301, Paused},
        {"301-with-body", answered(301, page), badAnswer, nothing, moved301, Paused},
        {"307", answered(307), badAnswer, nothing, moved307, Paused},
        {"400", answered(400), noConnection, "ответ HTTP 400", refused400, Parked},
        {"400-with-body", answered(400, sentence), noConnection, "ответ HTTP 400", refused400,
         Parked},
        {"401", answered(401), badCredentials, nothing, credentials401, Paused},
        {"401-with-body", answered(401, sentence), badCredentials, nothing, credentials401, Paused},
        {"403", answered(403), noConnection, "ответ HTTP 403", credentials403, Paused},
        {"404-with-body", answered(404, page), noConnection, "ответ HTTP 404", absent404, Paused},
        {"409", answered(409), duplicate, nothing, known409, Parked},
        {"409-with-body", answered(409, sentence), duplicate, nothing, known409, Parked},
        {"424", answered(424), integrity, nothing, refused424, Parked},
        {"424-with-body", answered(424, sentence), integrity, nothing, refused424, Parked},
        {"429", answered(429), noConnection, "ответ HTTP 429", asTransport, Waiting},
        {"500", answered(500), noConnection, "ответ HTTP 500", asTransport, Waiting},
        {"500-with-body", answered(500, page), noConnection, "ответ HTTP 500", asTransport,
         Waiting},
        {"503", answered(503), noConnection, "ответ HTTP 503", asTransport, Waiting},
        {"503-with-body", answered(503, page), noConnection, "ответ HTTP 503", asTransport,
         Waiting},
        {"200-after-booking", answered(200, {}, StatusAfterBooking), badAnswer, nothing, done,
         Delivered},
        {"302-after-booking", answered(302, page, StatusAfterBooking), badAnswer, nothing, moved302,
         Paused},
        {"500-after-booking", answered(500, {}, StatusAfterBooking), noConnection, "ответ HTTP 500",
         asTransport, Waiting},
        {"500-with-body-after-booking", answered(500, page, StatusAfterBooking), noConnection,
         "ответ HTTP 500", asTransport, Waiting},
        {"503-after-booking", answered(503, {}, StatusAfterBooking), noConnection, "ответ HTTP 503",
         asTransport, Waiting},
    };
}

} // namespace

void PrintTo(const FaultRow& row, std::ostream* out)
{
    *out << row.name;
}

const std::vector<FaultRow>& faultRows()
{
    static const std::vector<FaultRow> rows = [] {
        std::vector<FaultRow> all = connectionRows();
        const std::vector<FaultRow> further = statusRows();
        all.insert(all.end(), further.begin(), further.end());
        return all;
    }();
    return rows;
}

const FaultRow& faultRow(const char* name)
{
    const auto& rows = faultRows();
    const auto found = std::find_if(rows.begin(), rows.end(), [name](const FaultRow& row) {
        return std::string_view(row.name) == name;
    });
    if (found == rows.end()) {
        throw std::invalid_argument(name);
    }
    return *found;
}
