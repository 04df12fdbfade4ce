// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/resolver.h"

#include <condition_variable>
#include <dlfcn.h>
#include <mutex>
#include <netdb.h>
#include <string_view>

namespace {

std::mutex mutex;
std::condition_variable changed;
int waitingNow = 0;
bool hanging = false;

/// Returns whether the question had to wait.
bool waitWhileHanging()
{
    std::unique_lock lock(mutex);
    if (!hanging) {
        return false;
    }
    ++waitingNow;
    changed.wait(lock, [] { return !hanging; });
    --waitingNow;
    changed.notify_all();
    return true;
}

} // namespace

namespace resolver {

void hang()
{
    const std::lock_guard lock(mutex);
    hanging = true;
}

void letGo()
{
    std::unique_lock lock(mutex);
    hanging = false;
    changed.notify_all();
    changed.wait(lock, [] { return waitingNow == 0; });
}

int waiting()
{
    const std::lock_guard lock(mutex);
    return waitingNow;
}

} // namespace resolver

/// libcurl calls the one of the program.
extern "C" __attribute__((visibility("default"))) int
getaddrinfo(const char* node, const char* service, const addrinfo* hints, addrinfo** result)
{
    using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "getaddrinfo"));
    if (node == nullptr || !std::string_view(node).ends_with(".orva.test")) {
        return real(node, service, hints, result);
    }
    if (std::string_view(node) == "nobody.orva.test") {
        return EAI_NONAME;
    }
    return waitWhileHanging() ? EAI_AGAIN : real("127.0.0.1", service, hints, result);
}
