// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <curl/curl.h>

namespace bench {

/// The least that posts something: one libcurl handle that keeps its connection, with the headers
/// that the plug-in's requests carry.
class BareCurl
{
public:
    explicit BareCurl(const QString& url);
    ~BareCurl();
    BareCurl(const BareCurl&) = delete;
    BareCurl& operator=(const BareCurl&) = delete;

    /// Posts and waits for the whole answer. @throws std::runtime_error when anything fails
    void post(const QByteArray& body);

    QByteArray response;

private:
    CURL* handle;
    curl_slist* headers = nullptr;
};

} // namespace bench
