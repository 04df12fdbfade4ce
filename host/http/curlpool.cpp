// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/http/curlpool_p.h"

#include "host/http/sigpipeguard_p.h"

#include <iterator>
#include <sys/socket.h>

namespace poshost {

namespace {

/// Whether bytes wait to be read. A connection that the peer has closed has none; libcurl finds
/// that out by itself.
bool hasInput(curl_socket_t connection)
{
    char byte = 0;
    return connection != CURL_SOCKET_BAD &&
           ::recv(connection, &byte, 1, MSG_PEEK | MSG_DONTWAIT) > 0;
}

void cleanUp(CURL* handle)
{
    const SigPipeGuard guard;
    curl_easy_cleanup(handle);
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

/// The handle of that way given back last; null when there is none.
CURL* CurlPool::takeIdle(const QByteArray& way)
{
    const std::lock_guard lock(mutex);
    for (auto it = idle.rbegin(); it != idle.rend();) {
        if (it->way != way) {
            ++it;
            continue;
        }
        const Idle last = *it;
        it = std::reverse_iterator(idle.erase(std::next(it).base()));
        if (!hasInput(last.connection)) {
            return last.handle;
        }
        cleanUp(last.handle);
    }
    return nullptr;
}

CURL* CurlPool::borrow(const QByteArray& way)
{
    CURL* const kept = takeIdle(way);
    CURL* const handle = kept != nullptr ? kept : curl_easy_init();
    if (handle != nullptr) {
        curl_easy_setopt(handle, CURLOPT_MAXCONNECTS, 1L);
    }
    return handle;
}

void CurlPool::giveBack(CURL* handle, const QByteArray& way)
{
    if (handle == nullptr) {
        return;
    }
    curl_socket_t connection = CURL_SOCKET_BAD;
    curl_easy_getinfo(handle, CURLINFO_ACTIVESOCKET, &connection);
    curl_easy_reset(handle);
    const std::lock_guard lock(mutex);
    idle.push_back({handle, connection, way});
    if (idle.size() > maxIdle) {
        cleanUp(idle.front().handle);
        idle.erase(idle.begin());
    }
}

} // namespace poshost
