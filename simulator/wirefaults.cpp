// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/wirefaults.h"

#include "simulator/connections.h"

#include <algorithm>
#include <httplib.h>
#include <poll.h>
#include <stdexcept>
#include <string_view>
#include <unistd.h>

namespace simulator {
namespace {

using std::chrono::milliseconds;

/// How many bytes a length that is too large announces beyond the body.
constexpr size_t lengthError = 20;

void endConnection(int connection)
{
    ::shutdown(connection, SHUT_RDWR);
}

/// Sends bytes past the HTTP library and closes.
void sendGarbage(int connection)
{
    constexpr std::string_view garbage = "\x15\x03\x01 this is no answer\r\n\r\n";
    static_cast<void>(::send(connection, garbage.data(), garbage.size(), MSG_NOSIGNAL));
    endConnection(connection);
}

/// Takes the body out of the response, to be sent by other means.
std::string takeBody(httplib::Response& to, std::string& contentType)
{
    contentType = to.get_header_value("Content-Type");
    to.headers.erase("Content-Type");
    std::string body;
    body.swap(to.body);
    if (body.empty()) {
        body.push_back('\n'); // nothing could be cut or announced wrongly
    }
    return body;
}

void cutBody(httplib::Response& to)
{
    std::string type;
    const std::string body = takeBody(to, type);
    to.set_content_provider(body.size(), type, [body](size_t, size_t, httplib::DataSink& sink) {
        sink.write(body.data(), body.size() / 2);
        return false; // closes the connection
    });
}

void announceTooLittle(httplib::Response& to)
{
    std::string type;
    const std::string body = takeBody(to, type);
    const size_t announced = (body.size() + 1) / 2;
    to.set_content_provider(announced, type, [body](size_t, size_t, httplib::DataSink& sink) {
        return sink.write(body.data(), body.size());
    });
}

} // namespace

WireFaults::WireFaults()
{
    if (::pipe(stopPipe) != 0) {
        throw std::runtime_error("no pipe for stopping the server");
    }
}

WireFaults::~WireFaults()
{
    ::close(stopPipe[0]);
    ::close(stopPipe[1]);
}

void WireFaults::stop()
{
    // never read, so it wakes everybody
    static_cast<void>(::write(stopPipe[1], "x", 1));
}

/// Waits that long, with 0 without an end. Returns false when the client has gone or stop was
/// called meanwhile.
bool WireFaults::wait(int connection, milliseconds duration) const
{
    pollfd ends[2] = {{connection, POLLRDHUP, 0}, {stopPipe[0], POLLIN, 0}};
    const int timeout = duration.count() == 0 ? -1 : static_cast<int>(duration.count());
    return ::poll(ends, 2, timeout) == 0;
}

void WireFaults::hangAfterHeaders(const Fault& fault, int connection, httplib::Response& to) const
{
    const bool bodyToo = fault.kind == FaultKind::LengthTooLarge;
    std::string type;
    const std::string body = takeBody(to, type);
    to.set_content_provider(body.size() + (bodyToo ? lengthError : 0), type,
                            [=, this](size_t, size_t, httplib::DataSink& sink) {
                                if (bodyToo) {
                                    sink.write(body.data(), body.size());
                                }
                                wait(connection, fault.duration);
                                return false;
                            });
}

void WireFaults::drip(const Fault& fault, int connection, httplib::Response& to) const
{
    constexpr milliseconds usualPause(250);
    std::string type;
    const std::string body = takeBody(to, type);
    const auto bytes = static_cast<milliseconds::rep>(body.size());
    const milliseconds pause = fault.duration.count() == 0
                                   ? usualPause
                                   : std::max(fault.duration / bytes, milliseconds(1));
    to.set_content_provider(body.size(), type,
                            [=, this](size_t offset, size_t, httplib::DataSink& sink) {
                                return wait(connection, pause) && sink.write(&body[offset], 1);
                            });
}

void WireFaults::apply(const Answer& answer, const httplib::Request& from, int localPort,
                       httplib::Response& to)
{
    if (!answer.fault) {
        return;
    }
    const int connection = findConnection(localPort, from.remote_addr, from.remote_port);
    switch (answer.fault->kind) {
    case FaultKind::RequestLost:
    case FaultKind::ReplyLost:
        endConnection(connection);
        break;
    case FaultKind::HangBeforeHeaders:
        wait(connection, answer.fault->duration);
        endConnection(connection);
        break;
    case FaultKind::Delay:
        wait(connection, answer.fault->duration);
        break;
    case FaultKind::HangAfterHeaders:
    case FaultKind::LengthTooLarge:
        hangAfterHeaders(*answer.fault, connection, to);
        break;
    case FaultKind::SlowDrip:
        drip(*answer.fault, connection, to);
        break;
    case FaultKind::CutBody:
        cutBody(to);
        break;
    case FaultKind::LengthTooSmall:
        announceTooLittle(to);
        break;
    case FaultKind::GarbledHeaders:
        sendGarbage(connection);
        break;
    default:
        break; // happened already, or is no request's fault
    }
}

} // namespace simulator
