// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/faults/busyconnection.h"

#include "host/services/restclient.h"

BusyConnection::BusyConnection()
    : silent(std::make_unique<RawServer>([](RawServer::Connection& connection) {
          if (connection.readRequest()) {
              connection.hang();
          }
      })),
      thread([url = silent->url()] {
          constexpr int longEnough = 30;
          RestClient client;
          client.setTimeout(longEnough);
          client.post(url, "busy", {});
      })
{
    while (silent->requests().empty()) {
        std::this_thread::yield();
    }
}

BusyConnection::~BusyConnection()
{
    silent.reset(); // ends the request
    thread.join();
}
