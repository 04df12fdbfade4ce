// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

#include <atomic>
#include <mutex>

namespace simulator {

/// Lets a server look as if it were away: while it is off every connection is closed without an
/// answer and no request is looked at. May be used from several threads at once.
class ServerSwitch
{
public:
    /// url: where the server is; empty until it is known
    void setUrl(const QString& url);
    [[nodiscard]] QString url() const;

    void setAway(bool away) { isOff = away; }
    [[nodiscard]] bool isAway() const { return isOff; }

    /// What a request meets while the server is away.
    static Answer silence();

private:
    std::atomic<bool> isOff = false;
    mutable std::mutex mutex; // guards what follows
    QString address;
};

} // namespace simulator
