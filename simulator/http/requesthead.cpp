// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/requesthead.h"

#include "simulator/documents/rejection.h"

#include <QHash>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr qsizetype mostHeaders = 100;

/// The headers that count, by their names in lower case.
using Headers = QHash<QByteArray, QByteArray>;

[[noreturn]] void reject(const QString& why)
{
    throw Rejection(400, why);
}

/// Whether a name of a method or header is made of it.
bool isNameCharacter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') ||
           QByteArrayView("!#$%&'*+-.^_`|~").contains(character);
}

bool isName(QByteArrayView text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), isNameCharacter);
}

bool isDecided(const QByteArray& name)
{
    static const QByteArrayList names{"host",          "origin",         "content-type",
                                      "authorization", "content-length", "transfer-encoding",
                                      "x-orva-token"};
    return names.contains(name);
}

void readHeader(const QByteArray& line, Headers& headers)
{
    const qsizetype colon = line.indexOf(':');
    if (colon < 0 || !isName(QByteArrayView(line).first(colon))) {
        reject(u"A header of the request is no \"name: value\""_s);
    }
    const QByteArray name = line.first(colon).toLower();
    const QByteArray value = line.sliced(colon + 1).trimmed();
    const bool hasControl = std::any_of(value.begin(), value.end(), [](char character) {
        return (character >= 0 && character < ' ' && character != '\t') || character == '\x7f';
    });
    if (hasControl) {
        reject(u"A header of the request holds control characters"_s);
    }
    if (isDecided(name) && headers.contains(name)) {
        reject(u"The header %1 comes more than once"_s.arg(QString::fromLatin1(name)));
    }
    headers.insert(name, value);
}

/// The method, the path, decoded, and the query, as it came. Returns whether it is HTTP/1.1.
bool readRequestLine(const QByteArray& line, Request& request)
{
    const QByteArrayList words = line.split(' ');
    if (words.size() != 3 || !isName(words[0]) || !words[2].startsWith("HTTP/")) {
        reject(u"The request does not begin with a method, an address and HTTP/1.1"_s);
    }
    if (words[2] != "HTTP/1.1" && words[2] != "HTTP/1.0") {
        throw Rejection(505, u"Only HTTP/1.1 and HTTP/1.0 are spoken here"_s);
    }
    if (!words[1].startsWith('/')) {
        reject(u"The address of the request does not begin with \"/\""_s);
    }
    request.method = words[0];
    const qsizetype mark = words[1].indexOf('?');
    request.path = QByteArray::fromPercentEncoding(mark < 0 ? words[1] : words[1].first(mark));
    request.query = mark < 0 ? QByteArray() : words[1].sliced(mark + 1);
    return words[2] == "HTTP/1.1";
}

quint64 readLength(const QByteArray& text)
{
    const bool isNumber = !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char digit) {
        return digit >= '0' && digit <= '9';
    });
    if (!isNumber) {
        reject(u"The Content-Length is no whole number from 0 up"_s);
    }
    bool fits = false;
    const quint64 length = text.toULongLong(&fits);
    return fits ? length : std::numeric_limits<quint64>::max();
}

/// Where the body ends and what it is.
void readBodyHeaders(const Headers& headers, bool isNew, RequestHead& head)
{
    if (headers.contains("transfer-encoding")) {
        if (headers.value("transfer-encoding").toLower() != "chunked") {
            throw Rejection(501, u"Of the transfer encodings only \"chunked\" is understood"_s);
        }
        if (!isNew || headers.contains("content-length")) {
            reject(u"A body in chunks has no Content-Length and comes over HTTP/1.1"_s);
        }
        head.isChunked = true;
    }
    if (headers.contains("content-length")) {
        head.length = readLength(headers.value("content-length"));
    }
    const QByteArray coding = headers.value("content-encoding", "identity").toLower();
    if (coding != "identity") {
        throw Rejection(415, u"The body must not be compressed"_s);
    }
    head.isForm = headers.value("content-type").toLower().startsWith("multipart/form-data");
    head.asksFirst = isNew && headers.value("expect").toLower() == "100-continue";
}

} // namespace

RequestHead readRequestHead(const QByteArray& text)
{
    QByteArrayList lines = text.split('\n');
    for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
        if (!lines[i].endsWith('\r')) {
            reject(u"A line of the request's head does not end with CR LF"_s);
        }
        lines[i].chop(1);
    }
    if (lines.size() > mostHeaders + 1) {
        throw Rejection(431, u"The request has more than %1 headers"_s.arg(mostHeaders));
    }
    RequestHead head;
    const bool isNew = readRequestLine(lines.takeFirst(), head.request);
    Headers headers;
    for (const QByteArray& line : std::as_const(lines)) {
        readHeader(line, headers);
    }
    if (isNew && !headers.contains("host")) {
        reject(u"The header Host is missing"_s);
    }
    head.request.authorization = headers.value("authorization");
    head.request.host = headers.value("host");
    head.request.origin = headers.value("origin");
    head.request.contentType = headers.value("content-type");
    head.request.pageToken = headers.value("x-orva-token");
    head.request.began = std::chrono::steady_clock::now();
    readBodyHeaders(headers, isNew, head);
    const QByteArray connection = headers.value("connection").toLower();
    head.closes = isNew ? connection.contains("close") : connection != "keep-alive";
    return head;
}

} // namespace simulator
