// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/stopsignals.h"

#include "till/failure.h"
#include "till/text.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <sys/signalfd.h>
#include <unistd.h>

namespace till {
namespace {

sigset_t askingToEnd()
{
    sigset_t set{};
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    return set;
}

} // namespace

StopSignals::StopSignals()
{
    const sigset_t set = askingToEnd();
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
    signals = ::signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC);
    if (signals < 0) {
        throw Failure(Text::tr("Signals cannot be waited for (%1); try again.")
                          .arg(QString::fromLocal8Bit(std::strerror(errno))));
    }
}

StopSignals::~StopSignals()
{
    signalfd_siginfo obeyed{}; // or it would strike as soon as it is let through
    while (::read(signals, &obeyed, sizeof obeyed) == ssize_t(sizeof obeyed)) {
    }
    ::close(signals);
    const sigset_t set = askingToEnd();
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}

} // namespace till
