// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/commands/untilstopped.h"

#include <csignal>

namespace orvastore {

namespace {

sigset_t endingSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    return set;
}

} // namespace

UntilStopped::UntilStopped()
{
    const sigset_t set = endingSignals();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

UntilStopped::~UntilStopped()
{
    const sigset_t set = endingSignals();
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}

bool UntilStopped::hasComeWithin(std::chrono::seconds time)
{
    const sigset_t set = endingSignals();
    const timespec limit{time.count(), 0};
    return sigtimedwait(&set, nullptr, &limit) > 0;
}

void UntilStopped::wait()
{
    const sigset_t set = endingSignals();
    int which = 0;
    sigwait(&set, &which);
}

} // namespace orvastore
