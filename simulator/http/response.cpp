// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/response.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// As HTTP writes it, so that a till can hold its clock against it.
QByteArray presentDate()
{
    return QLocale::c()
        .toString(QDateTime::currentDateTimeUtc(), u"ddd, dd MMM yyyy hh:mm:ss 'GMT'"_s)
        .toLatin1();
}

/// The words behind a status, which are for people.
QByteArray phraseFor(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 400:
        return "Bad Request";
    case 401:
        return "Unauthorized";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    case 409:
        return "Conflict";
    case 413:
        return "Content Too Large";
    case 415:
        return "Unsupported Media Type";
    case 424:
        return "Failed Dependency";
    case 500:
        return "Internal Server Error";
    case 503:
        return "Service Unavailable";
    default:
        return "Status";
    }
}

} // namespace

QByteArray Response::head(qsizetype announced) const
{
    return opening + "Content-Length: " + QByteArray::number(announced) + "\r\n\r\n";
}

Response responseFor(const Answer& answer, const QByteArray& method, bool closes)
{
    Response response;
    response.opening =
        "HTTP/1.1 " + QByteArray::number(answer.status) + ' ' + phraseFor(answer.status) + "\r\n";
    if (const QByteArray date = answer.date.value_or(presentDate()); !date.isEmpty()) {
        response.opening += "Date: " + date + "\r\n";
    }
    if (!answer.contentType.isEmpty()) {
        response.opening += "Content-Type: " + answer.contentType + "\r\n";
    }
    if (answer.status == 401) {
        response.opening += "WWW-Authenticate: Basic realm=\"orva-simulator\"\r\n";
    }
    if (answer.status == 405) {
        response.opening += "Allow: POST\r\n";
    }
    if (!answer.location.isEmpty()) {
        response.opening += "Location: " + answer.location + "\r\n";
    }
    for (const QByteArray& header : answer.headers) {
        response.opening += header + "\r\n";
    }
    if (closes) {
        response.opening += "Connection: close\r\n";
    }
    response.body = answer.body;
    response.saidLength = answer.announced;
    response.hasBody = method != "HEAD" && answer.status != 204 && answer.status != 304;
    return response;
}

} // namespace simulator
