// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/tr.h"

#include <QString>
#include <curl/curl.h>

/// The one place where what libcurl reports becomes a text for people. Texts name the server by
/// its host only: an address may hold a user name and a password.
namespace poshost::transporterror {

/// "restTransportError": what failed on the way to the host and what to look at.
/// @param detail libcurl's own words; used only where they cannot hold parts of the address
/// @param osError errno of the failed connection, 0 when unknown
tr::Tr fromCurl(CURLcode code, const QString& host, const QString& detail, int osError);
/// "restHttpStatus": the host answered with a status from 400 up.
tr::Tr fromStatus(int status, const QString& host);
/// "restTransportError": the host's answer was none that ends a request, such as 101.
tr::Tr notFinal(int status, const QString& host);
/// "restTransportError": the proxy refused to connect to the host.
tr::Tr fromProxy(int status, const QString& host);
/// "restTransportError": the proxy on the way to the host cannot be reached.
/// @param osError errno of the failed connection, 0 when unknown
tr::Tr proxyAway(const QString& host, int osError);
/// "restTransportError": the answer's body is larger than the limit.
tr::Tr answerTooLarge(const QString& host, qint64 limitBytes);
/// "restTransportError": the answer's headers are larger than they may be.
tr::Tr headersTooLarge(const QString& host);
/// "restAddressError": the address is empty, not valid, or neither http nor https.
tr::Tr badAddress();
/// "restHeaderError": a header's name or value cannot be sent.
/// @param name the header's name; its value may be a secret and is not shown
tr::Tr badHeader(const QString& name);

} // namespace poshost::transporterror
