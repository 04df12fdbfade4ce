// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/http/channel.h"
#include "simulator/http/requesthead.h"

namespace simulator {

/// Reads the requests of one connection, one after the other. What a client sends before it has its
/// answer is kept for the next request.
class RequestReader
{
public:
    static constexpr qsizetype maximumHead = 32 * 1024;

    /// The channel must outlive the reader.
    explicit RequestReader(Channel& readFrom) : channel(readFrom) {}

    /// Waits until a request begins; false when the time is over or the client has gone.
    bool waitForRequest(Channel::Deadline until);

    /// Reads what stands before the body. Nothing when the client has gone before its end.
    /// Throws Rejection: as readRequestHead does, 408 when it is late, 431 when it is too long.
    std::optional<RequestHead> readHead(Channel::Deadline until);

    /// Reads the body of the request whose head was read last.
    /// Throws Rejection: 413 when it is or is announced to be larger than that many bytes, 408 when
    /// it is late, 400 when it ends before its end or its pieces are garbled.
    QByteArray readBody(const RequestHead& head, qsizetype most, Channel::Deadline until);

    /// Reads and forgets that many bytes; false when fewer come in time.
    bool skip(quint64 count, Channel::Deadline until);

private:
    Channel::Outcome fill(Channel::Deadline until);
    QByteArray readLine(Channel::Deadline until);
    void append(QByteArray& to, qsizetype count, Channel::Deadline until);
    QByteArray readChunks(qsizetype most, Channel::Deadline until);

    Channel& channel;
    QByteArray buffer; ///< what has come and was not used yet
};

} // namespace simulator
