// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/witness.h"

#include <QElapsedTimer>

#include <algorithm>

namespace till::doctor {

Witness::Witness(int limit) : limitSeconds(limit), former(MockFactory<RestClient>::mocked)
{
    RestClient::setTimeout(limit);
    MockFactory<RestClient>::mocked = this;
}

Witness::~Witness()
{
    MockFactory<RestClient>::mocked = former;
}

void Witness::post(const QUrl& url, const QByteArray& body, const QHash<QString, QString>& headers)
{
    ++count;
    QElapsedTimer clock;
    clock.start();
    RestClient::post(url, body, headers);
    duration = static_cast<int>(clock.elapsed());
}

void Witness::setTimeout(int seconds)
{
    RestClient::setTimeout(seconds > 0 ? std::min(seconds, limitSeconds) : limitSeconds);
}

} // namespace till::doctor
