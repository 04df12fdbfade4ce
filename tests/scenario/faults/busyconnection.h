// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/restclient.h"

#include <QUrl>

#include <functional>
#include <thread>

/// Keeps the connection that is held open to a server busy with a request that gets no answer, as
/// a delivery does that runs beside the cashier: the next request of this process to that server
/// must connect, and ask for its address, anew.
class BusyConnection
{
public:
    /// Returns when the request is under way.
    /// @param url where the server leaves a request unanswered
    /// @param isUnderWay whether it has come there
    BusyConnection(const QUrl& url, const std::function<bool()>& isUnderWay);
    /// Gives the request up.
    ~BusyConnection();
    BusyConnection(const BusyConnection&) = delete;
    BusyConnection& operator=(const BusyConnection&) = delete;

private:
    RestClient client;
    std::thread thread;
};
