// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/restclient.h"
#include "tests/support/mocked.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

namespace tests {

/// A loyalty server behind the host's HTTP client: it carries the check back with 10 % discount on
/// line 1, 9 points for it, 40 points to spend on it, and messages.
class FakeServer : public RestClient
{
public:
    FakeServer() : registration(*this) {}

    void post(const QUrl& url, const QByteArray& body,
              const QHash<QString, QString>& headers) override;
    int getError() override { return reachable && status < 400 ? 0 : 1; }
    int getHttpStatusCode() override { return reachable ? status : 0; }
    tr::Tr getErrorText() override;
    QByteArray getResponse() override { return answer; }
    void setTimeout(int seconds) override { timeout = seconds; }

    bool reachable = true;
    int status = 200;
    int timeout = 0;
    QList<QUrl> urls;
    QList<QByteArray> bodies;

private:
    QByteArray answer;
    Registered<RestClient> registration;
};

} // namespace tests
