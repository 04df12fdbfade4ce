// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/faults/busyconnection.h"

BusyConnection::BusyConnection(const QUrl& url, const std::function<bool()>& isUnderWay)
    : thread([this, url] {
          constexpr int longEnough = 30;
          client.setTimeout(longEnough);
          client.post(url, {}, {});
      })
{
    while (!isUnderWay()) {
        std::this_thread::yield();
    }
}

BusyConnection::~BusyConnection()
{
    client.abort();
    thread.join();
}
