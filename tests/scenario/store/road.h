// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <atomic>
#include <thread>

/// A way to a port of this machine that can fall silent: connections stay open, and nothing comes
/// through any more.
class Road
{
public:
    explicit Road(int toPort);
    ~Road();
    Road(const Road&) = delete;
    Road& operator=(const Road&) = delete;

    int port() const { return ownPort; }
    void fallSilent() { silent = true; }

private:
    void run();

    const int target;
    int listener = -1;
    int ownPort = 0;
    std::atomic<bool> silent = false;
    std::atomic<bool> ending = false;
    std::thread thread;
};
