// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A disk that takes its time: each sync takes ORVA_SYNC_MILLISECONDS more, and one of the process's
// first thread, where the cashier waits, adds a byte to the file ORVA_SYNC_LOG.

#include <cstdlib>
#include <fcntl.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace {

void waitForTheDisk()
{
    const char* const text = std::getenv("ORVA_SYNC_MILLISECONDS");
    const long milliseconds = text == nullptr ? 0 : std::strtol(text, nullptr, 10);
    const timespec duration{milliseconds / 1000, milliseconds % 1000 * 1'000'000};
    ::nanosleep(&duration, nullptr);
}

void countForTheCashier()
{
    const char* const name = std::getenv("ORVA_SYNC_LOG");
    if (name == nullptr || ::getpid() != ::gettid()) {
        return;
    }
    const int file = ::open(name, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0 || ::write(file, "s", 1) != 1) {
        std::abort(); // a sync that is not counted would pass for none
    }
    ::close(file);
}

int slowly(long call, int file)
{
    countForTheCashier();
    waitForTheDisk();
    return static_cast<int>(::syscall(call, file));
}

} // namespace

extern "C" {

#pragma GCC visibility push(default)

int fsync(int file)
{
    return slowly(SYS_fsync, file);
}

int fdatasync(int file)
{
    return slowly(SYS_fdatasync, file);
}

#pragma GCC visibility pop
}
