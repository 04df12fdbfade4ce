// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/curlpool.h"

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
        if (!idle.empty()) {
            CURL* const handle = idle.back();
            idle.pop_back();
            return handle;
        }
    }
    return curl_easy_init();
}

void CurlPool::giveBack(CURL* handle)
{
    if (handle == nullptr) {
        return;
    }
    curl_easy_reset(handle);
    const std::lock_guard lock(mutex);
    idle.push_back(handle);
}
