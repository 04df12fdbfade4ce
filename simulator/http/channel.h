// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArrayView>

#include <atomic>
#include <chrono>

struct ssl_ctx_st;
struct ssl_st;

namespace simulator {

/// A connection that a server has accepted, with or without TLS. It is used in the thread that
/// serves it; only the two operations that end it may be called from others, while it exists.
class Channel
{
public:
    using Deadline = std::chrono::steady_clock::time_point;

    /// What became of a read.
    enum class Outcome
    {
        Read,
        Closed, ///< the client has gone, or the channel was ended
        TooLate,
    };

    /// Takes over a connected socket and closes it in the end.
    /// tls: what encrypts the connection, must outlive it; null for none. Blocks for nothing.
    Channel(int connected, ssl_ctx_st* tls);
    ~Channel();
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    /// Agrees on the encryption; true at once where there is none. False when it fails or is late.
    bool greet(Deadline until);

    /// Reads what has come into the buffer, at least one byte, and waits for it.
    /// count: how many bytes have room; then how many were read
    Outcome read(char* to, qsizetype& count, Deadline until);

    /// Sends all bytes. False when the client has gone, or takes nothing for 30 s.
    bool write(QByteArrayView bytes);

    /// Tells the client that nothing more is sent. What it sends can still be read.
    void finishWriting();

    /// Waits that long, with 0 without an end. False when the client has gone or the other
    /// descriptor can be read meanwhile.
    [[nodiscard]] bool rest(std::chrono::milliseconds duration, int interruption) const;

    /// Lets nothing more be read, so that a channel that waits for a request ends.
    void stopReading() const;
    /// Ends all reading and writing.
    void end() const;

    /// Whether a request is being answered, which its server notes here.
    std::atomic<bool> isBusy = false;

private:
    [[nodiscard]] bool waitFor(short events, Deadline until) const;
    [[nodiscard]] bool isWorthAnotherTry(int result, Deadline until) const;

    const int socket;
    ssl_st* const session;
};

} // namespace simulator
