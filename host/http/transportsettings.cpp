// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/http/transportsettings_p.h"

#include "host/services/config.h"

namespace poshost {

using namespace Qt::StringLiterals;

TransportSettings TransportSettings::read()
{
    TransportSettings settings;
    settings.maxAnswerBytes = defaultMaxAnswerBytes;
    if (const Config* config = Singleton<Config>::instance) {
        settings.proxy = config->getString(u"http:proxy"_s, QString()).toUtf8();
        settings.caFile = config->getString(u"http:caFile"_s, QString()).toLocal8Bit();
        settings.maxAnswerBytes = config->getInt(u"http:maxAnswerBytes"_s, defaultMaxAnswerBytes);
    }
    return settings;
}

QByteArray TransportSettings::wayTo(const QUrl& url) const
{
    const QByteArray server = url.toEncoded(QUrl::RemoveUserInfo | QUrl::RemovePath |
                                            QUrl::RemoveQuery | QUrl::RemoveFragment);
    return server + '\n' + proxy + '\n' + caFile;
}

void TransportSettings::applyTo(CURL* handle) const
{
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    // a resolver thread that hangs is left behind instead of being waited for
    curl_easy_setopt(handle, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(handle, CURLOPT_TCP_NODELAY, 1L);
    curl_easy_setopt(handle, CURLOPT_TCP_KEEPALIVE, 1L);
    // texts, even empty ones, keep libcurl from asking the environment
    curl_easy_setopt(handle, CURLOPT_PROXY, proxy.constData());
    curl_easy_setopt(handle, CURLOPT_NOPROXY, "");
    curl_easy_setopt(handle, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    if (!caFile.isEmpty()) {
        curl_easy_setopt(handle, CURLOPT_CAINFO, caFile.constData());
        curl_easy_setopt(handle, CURLOPT_CAPATH, nullptr);
    }
}

} // namespace poshost
