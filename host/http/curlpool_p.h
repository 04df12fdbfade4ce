// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <curl/curl.h>
#include <mutex>
#include <vector>

namespace poshost {

/// The process-wide store of libcurl's easy handles, each with the connection and the TLS session
/// that it keeps. Thread-safe.
///
/// A handle serves one way only: one server through one proxy with one file of trust, so it never
/// has more than one connection, and which connection is given up is decided here and not by
/// libcurl: at most maxIdle handles wait for work, and beyond that the one goes that has waited
/// longest. The connection used last is therefore kept as long as there is any other.
///
/// Of several handles for a way the one given back last is lent first. So a thread that works alone
/// always gets the same handle and with it the same connection, and there are never more
/// connections to a server than requests that ran at the same time.
class CurlPool
{
public:
    /// How many handles wait for work at most.
    static constexpr size_t maxIdle = 16;

    /// The pool of the process. Never destroyed: threads may still send while the process ends.
    static CurlPool& instance();

    CurlPool(const CurlPool&) = delete;
    CurlPool& operator=(const CurlPool&) = delete;

    /// Lends a handle with default options; null when libcurl cannot make one. A handle on whose
    /// connection something has come since its last answer is thrown away with it: what nobody
    /// asked for must not be taken for the answer to the next request.
    /// @param way that all its requests will take, see TransportSettings::wayTo
    CURL* borrow(const QByteArray& way);
    /// Takes a borrowed handle back. Its options are reset, its connection kept.
    void giveBack(CURL* handle, const QByteArray& way);

private:
    CurlPool();
    ~CurlPool() = default;

    /// A handle that nobody uses, with the connection that it used last.
    struct Idle
    {
        CURL* handle;
        curl_socket_t connection;
        QByteArray way;
    };

    CURL* takeIdle(const QByteArray& way);

    std::mutex mutex;
    std::vector<Idle> idle; ///< the one that has waited longest comes first
};

/// A handle borrowed for as long as this object lives.
class CurlHandle
{
public:
    explicit CurlHandle(const QByteArray& usedWay)
        : way(usedWay), handle(CurlPool::instance().borrow(way))
    {}
    ~CurlHandle() { CurlPool::instance().giveBack(handle, way); }
    CurlHandle(const CurlHandle&) = delete;
    CurlHandle& operator=(const CurlHandle&) = delete;

    /// Null when libcurl could not make a handle.
    CURL* get() const { return handle; }

private:
    const QByteArray way;
    CURL* const handle;
};

} // namespace poshost
