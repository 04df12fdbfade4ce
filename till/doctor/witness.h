// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/restclient.h"

namespace till::doctor {

/// The process's HTTP client while it lives: sends as always, but never waits longer than its
/// limit, and knows afterwards what was sent and what came. One request at a time.
class Witness : public RestClient
{
public:
    explicit Witness(int limit);
    ~Witness() override;

    void post(const QUrl& url, const QByteArray& body,
              const QHash<QString, QString>& headers) override;
    void setTimeout(int seconds) override;

    int requests() const { return count; }
    int milliseconds() const { return duration; }

private:
    const int limitSeconds;
    int count = 0;
    int duration = 0;
    RestClient* const former;
};

} // namespace till::doctor
