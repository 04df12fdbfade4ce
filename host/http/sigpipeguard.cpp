// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/http/sigpipeguard_p.h"

#include <ctime>

namespace poshost {

namespace {

sigset_t onlySigPipe()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    return set;
}

bool isPending()
{
    sigset_t pending;
    sigemptyset(&pending);
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
}

} // namespace

SigPipeGuard::SigPipeGuard() : former(), pendingBefore(isPending())
{
    const sigset_t set = onlySigPipe();
    pthread_sigmask(SIG_BLOCK, &set, &former);
}

SigPipeGuard::~SigPipeGuard()
{
    if (!pendingBefore && isPending()) {
        const sigset_t set = onlySigPipe();
        const timespec atOnce{};
        sigtimedwait(&set, nullptr, &atOnce);
    }
    pthread_sigmask(SIG_SETMASK, &former, nullptr);
}

} // namespace poshost
