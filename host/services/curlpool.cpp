// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/curlpool.h"

#include "host/services/sigpipeguard.h"

#include <sys/socket.h>

namespace {

/// Whether bytes wait to be read. A connection that the peer has closed has none; libcurl finds
/// that out by itself.
bool hasInput(curl_socket_t connection)
{
    char byte = 0;
    return connection != CURL_SOCKET_BAD &&
           ::recv(connection, &byte, 1, MSG_PEEK | MSG_DONTWAIT) > 0;
}

} // namespace

CurlPool& CurlPool::instance()
{
    static CurlPool* const pool = new CurlPool;
    return *pool;
}

CurlPool::CurlPool()
{
    curl_global_init(CURL_GLOBAL_DEFAULT);
}

CURL* CurlPool::borrow()
{
    {
        const std::lock_guard lock(mutex);
        while (!idle.empty()) {
            const Idle last = idle.back();
            idle.pop_back();
            if (!hasInput(last.connection)) {
                return last.handle;
            }
            const SigPipeGuard guard;
            curl_easy_cleanup(last.handle);
        }
    }
    return curl_easy_init();
}

void CurlPool::giveBack(CURL* handle)
{
    if (handle == nullptr) {
        return;
    }
    curl_socket_t connection = CURL_SOCKET_BAD;
    curl_easy_getinfo(handle, CURLINFO_ACTIVESOCKET, &connection);
    curl_easy_reset(handle);
    const std::lock_guard lock(mutex);
    idle.push_back({handle, connection});
}
