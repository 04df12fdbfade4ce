// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/restclient.h"

#include <QByteArray>

namespace bench {

/// The process's transport while it lives: takes every post and gives the same answer to each.
class CannedTransport : public RestClient
{
public:
    explicit CannedTransport(const QByteArray& always) : answer(always)
    {
        MockFactory<RestClient>::mocked = this;
    }
    ~CannedTransport() override { MockFactory<RestClient>::mocked = nullptr; }

    void post(const QUrl&, const QByteArray& body, const QHash<QString, QString>&) override
    {
        posted = body;
    }
    int getError() override { return 0; }
    int getHttpStatusCode() override { return 200; }
    QByteArray getResponse() override { return answer; }
    void setTimeout(int) override {}

    /// The body of the last post.
    QByteArray posted;

private:
    QByteArray answer;
};

} // namespace bench
