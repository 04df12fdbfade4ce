// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

#include <functional>
#include <memory>
#include <stdexcept>

namespace simulator {

/// The server cannot listen: one sentence with the address and the system's reason.
class ListenError : public std::runtime_error
{
public:
    explicit ListenError(const QString& what) : std::runtime_error(what.toStdString()) {}
};

/// Takes requests over HTTP/1.1 and hands them to a function. Keeps connections open for 60 s after
/// their last request and serves up to 64 of them at a time; further ones wait. Requests of one
/// connection are answered in their order, also those that come before the answer to the last one.
///
/// A request has 60 s to arrive. What is larger, later or otherwise not as it must be is refused
/// without being handed on, and the connection closed. All bodies together have 32 MiB, and what
/// becomes of them while they are handled 200 MiB as far as that can be told beforehand: a request
/// that finds no room waits up to 30 s and is then answered 503; one whose body has up to 64 KiB
/// needs none.
///
/// An answer with a stream is followed by what comes of it, until the client goes or the server
/// ends; its connection closes then.
///
/// Faults that answers carry happen as they say; a server that ends ends their waiting.
class HttpServer
{
public:
    static constexpr qsizetype maximumBody = 16 * 1024 * 1024;

    /// Answers a request; called from several threads at once.
    using Handler = std::function<Answer(const Request&)>;

    /// Learns of every request and its answer before this is sent. The request has its body unless
    /// that was not read. Called from several threads at once.
    using Observer = std::function<void(const Request&, const Answer&)>;

    /// Says from what stands before the body how many bytes of it may come, at most maximumBody: a
    /// larger one is refused with 413. With 0 nothing is kept of a body, and the handler, which is
    /// to refuse the request for other reasons, finds it empty. Called from several threads at
    /// once.
    using BodyLimit = std::function<qsizetype(const Request&)>;

    /// A certificate and its key in PEM files, for HTTPS; plain HTTP without.
    struct Certificate
    {
        QString file;
        QString keyFile;
    };

    /// Listens from the moment that it returns. port 0 takes a free one. Without a limit every body
    /// may have maximumBody. Throws ListenError.
    HttpServer(const QString& address, int port, Handler handler, Observer observer = {},
               const Certificate& certificate = {}, BodyLimit limit = {});

    /// Sends the answers that are being made, waiting for them up to 5 s, and closes all
    /// connections.
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    /// The port that it listens at.
    [[nodiscard]] int port() const;

    /// The address to reach it at, as in "http://127.0.0.1:8710/".
    [[nodiscard]] QString url() const;

private:
    class Implementation;
    const std::unique_ptr<Implementation> implementation;
};

} // namespace simulator
