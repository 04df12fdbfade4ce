// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <curl/curl.h>
#include <mutex>
#include <vector>

/// The process-wide store of libcurl's easy handles, each with the connections and TLS sessions it
/// keeps. Thread-safe.
///
/// The handle given back last is lent first. So a thread that works alone always gets the same
/// handle and with it the same connection, and there are never more connections to a server than
/// requests that ran at the same time.
class CurlPool
{
public:
    /// The pool of the process. Never destroyed: threads may still send while the process ends.
    static CurlPool& instance();

    CurlPool(const CurlPool&) = delete;
    CurlPool& operator=(const CurlPool&) = delete;

    /// Lends a handle with default options; null when libcurl cannot make one. A handle on whose
    /// connection something has come since its last answer is thrown away with it: what nobody
    /// asked for must not be taken for the answer to the next request.
    CURL* borrow();
    /// Takes a borrowed handle back. Its options are reset, its connections kept.
    void giveBack(CURL* handle);

private:
    CurlPool();
    ~CurlPool() = default;

    /// A handle that nobody uses, with the connection that it used last.
    struct Idle
    {
        CURL* handle;
        curl_socket_t connection;
    };

    std::mutex mutex;
    std::vector<Idle> idle;
};

/// A handle borrowed for as long as this object lives.
class CurlHandle
{
public:
    CurlHandle() : handle(CurlPool::instance().borrow()) {}
    ~CurlHandle() { CurlPool::instance().giveBack(handle); }
    CurlHandle(const CurlHandle&) = delete;
    CurlHandle& operator=(const CurlHandle&) = delete;

    /// Null when libcurl could not make a handle.
    CURL* get() const { return handle; }

private:
    CURL* handle;
};
