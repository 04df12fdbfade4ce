// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/barecurl.h"

#include <stdexcept>

namespace bench {

namespace {

size_t take(const char* data, size_t size, size_t count, void* user)
{
    static_cast<QByteArray*>(user)->append(data, static_cast<qsizetype>(size) *
                                                     static_cast<qsizetype>(count));
    return size * count;
}

} // namespace

BareCurl::BareCurl(const QString& url) : handle(curl_easy_init())
{
    for (const char* const line :
         {"Expect:", "Content-Type: application/xml", "Accept: application/xml",
          "Authorization: Basic "
          "dGlsbDplNWU5ZmExYmEzMWVjZDFhZTg0Zjc1Y2FhYTQ3NGYzYTY2M2YwNWY0Omtl"}) {
        headers = curl_slist_append(headers, line);
    }
    curl_easy_setopt(handle, CURLOPT_URL, url.toUtf8().constData());
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, take);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &response);
}

BareCurl::~BareCurl()
{
    curl_easy_cleanup(handle);
    curl_slist_free_all(headers);
}

void BareCurl::post(const QByteArray& body)
{
    response.clear();
    curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, body.constData());
    long status = 0;
    if (curl_easy_perform(handle) != CURLE_OK ||
        curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status) != CURLE_OK || status != 200) {
        throw std::runtime_error("the loopback server did not answer");
    }
}

} // namespace bench
