// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/stopsignal.h"

#include <pthread.h>

namespace simulator {

StopSignal::StopSignal()
{
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

void StopSignal::wait() const
{
    int received = 0;
    while (sigwait(&signals, &received) != 0) {
    }
}

bool StopSignal::waitFor(std::chrono::milliseconds time) const
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    timespec limit{};
    limit.tv_sec = seconds.count();
    limit.tv_nsec = std::chrono::nanoseconds(time - seconds).count();
    return sigtimedwait(&signals, nullptr, &limit) > 0;
}

} // namespace simulator
