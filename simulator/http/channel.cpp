// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/channel.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <openssl/err.h>
#include <openssl/ssl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace simulator {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::chrono::seconds longestPause(30);

SSL* makeSession(int socket, SSL_CTX* tls)
{
    SSL* const session = tls == nullptr ? nullptr : SSL_new(tls);
    if (session != nullptr) {
        SSL_set_fd(session, socket);
        SSL_set_accept_state(session);
    }
    return session;
}

int lengthFor(qsizetype count)
{
    return static_cast<int>(std::min<qsizetype>(count, std::numeric_limits<int>::max()));
}

} // namespace

Channel::Channel(int connected, ssl_ctx_st* tls)
    : socket(connected), session(makeSession(connected, tls))
{
    const int yes = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    // all waiting is done in poll, which has a deadline
    ::fcntl(socket, F_SETFL, ::fcntl(socket, F_GETFL) | O_NONBLOCK);
}

Channel::~Channel()
{
    SSL_free(session);
    ::close(socket);
}

bool Channel::waitFor(short events, Deadline until) const
{
    for (;;) {
        const auto left = std::chrono::ceil<milliseconds>(until - steady_clock::now());
        if (left <= milliseconds(0)) {
            return false;
        }
        pollfd end{socket, events, 0};
        const int ready = ::poll(&end, 1, static_cast<int>(left.count()));
        if (ready != -1 || errno != EINTR) {
            return ready > 0;
        }
    }
}

/// After an operation of the session that has not succeeded: waits for what it needs.
bool Channel::isWorthAnotherTry(int result, Deadline until) const
{
    switch (SSL_get_error(session, result)) {
    case SSL_ERROR_WANT_READ:
        return waitFor(POLLIN, until);
    case SSL_ERROR_WANT_WRITE:
        return waitFor(POLLOUT, until);
    default:
        return false;
    }
}

bool Channel::greet(Deadline until)
{
    if (session == nullptr) {
        return true;
    }
    for (;;) {
        ERR_clear_error();
        const int result = SSL_accept(session);
        if (result == 1) {
            return true;
        }
        if (!isWorthAnotherTry(result, until)) {
            return false;
        }
    }
}

Channel::Outcome Channel::read(char* to, qsizetype& count, Deadline until)
{
    for (;;) {
        ERR_clear_error();
        const auto got = session == nullptr
                             ? ::recv(socket, to, static_cast<size_t>(count), 0)
                             : static_cast<ssize_t>(SSL_read(session, to, lengthFor(count)));
        if (got > 0) {
            count = static_cast<qsizetype>(got);
            return Outcome::Read;
        }
        const bool again = session == nullptr ? got < 0 && (errno == EAGAIN || errno == EINTR) &&
                                                    waitFor(POLLIN, until)
                                              : isWorthAnotherTry(static_cast<int>(got), until);
        if (!again) {
            count = 0;
            return steady_clock::now() >= until ? Outcome::TooLate : Outcome::Closed;
        }
    }
}

bool Channel::write(QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        ERR_clear_error();
        const auto until = steady_clock::now() + longestPause;
        const auto sent =
            session == nullptr
                ? ::send(socket, bytes.data(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL)
                : static_cast<ssize_t>(SSL_write(session, bytes.data(), lengthFor(bytes.size())));
        if (sent > 0) {
            bytes = bytes.sliced(static_cast<qsizetype>(sent));
            continue;
        }
        const bool again = session == nullptr
                               ? (errno == EAGAIN || errno == EINTR) && waitFor(POLLOUT, until)
                               : isWorthAnotherTry(static_cast<int>(sent), until);
        if (!again) {
            return false;
        }
    }
    return true;
}

void Channel::finishWriting()
{
    if (session != nullptr) {
        ERR_clear_error();
        SSL_shutdown(session);
    }
    ::shutdown(socket, SHUT_WR);
}

bool Channel::rest(milliseconds duration, int interruption) const
{
    pollfd ends[2] = {{socket, POLLRDHUP, 0}, {interruption, POLLIN, 0}};
    const int timeout = duration.count() == 0 ? -1 : static_cast<int>(duration.count());
    return ::poll(ends, 2, timeout) == 0;
}

void Channel::stopReading() const
{
    ::shutdown(socket, SHUT_RD);
}

void Channel::end() const
{
    ::shutdown(socket, SHUT_RDWR);
}

} // namespace simulator
