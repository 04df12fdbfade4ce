// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/admingate.h"

#include <QRandomGenerator>

#include <array>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// The name in "name", "name:80", "[::1]" or "[::1]:80", as it stands there.
QByteArray nameIn(const QByteArray& host)
{
    const qsizetype port = host.lastIndexOf(':');
    return port > host.lastIndexOf(']') ? host.first(port) : host;
}

bool isLoopback(const QByteArray& name)
{
    return name == "localhost" || name == "127.0.0.1" || name == "[::1]";
}

QByteArray madeToken()
{
    std::array<quint64, 2> words{};
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    return QByteArray(reinterpret_cast<const char*>(words.data()), sizeof words).toHex();
}

bool changesSomething(const Request& request)
{
    return request.method != "GET" && request.method != "HEAD";
}

} // namespace

AdminGate::AdminGate() : token(madeToken()) {}

std::optional<Answer> AdminGate::objection(const Request& request) const
{
    const QByteArray host = request.host.toLower();
    if (!isLoopback(nameIn(host))) {
        return refusal(403, u"The Host must be localhost, 127.0.0.1 or [::1]: this address is for "
                            "programs on this machine"_s);
    }
    if (!request.origin.isEmpty()) {
        if (request.origin.toLower() != "http://" + host) {
            return refusal(403, u"Pages of other addresses may not ask for anything here"_s);
        }
        if (changesSomething(request) && request.pageToken != token) {
            return refusal(403, u"The page was made by a server that has ended: load it anew"_s);
        }
    }
    const QByteArray type = request.contentType.split(';').first().trimmed().toLower();
    const bool isJson = type == "application/json";
    const bool takesBody = request.method == "POST";
    if (takesBody ? !isJson : !isJson && !type.isEmpty()) {
        return refusal(415, u"The body must be JSON, with the header Content-Type: "
                            "application/json"_s);
    }
    return std::nullopt;
}

} // namespace simulator
