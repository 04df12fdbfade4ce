// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/wirefaults.h"

#include "simulator/http/channel.h"
#include "simulator/http/response.h"

#include <algorithm>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace simulator {
namespace {

using std::chrono::milliseconds;

/// How many bytes a length that is too large announces beyond the body.
constexpr qsizetype lengthError = 20;

bool sendWhole(const Response& response, Channel& channel)
{
    const qsizetype said = response.saidLength.value_or(response.body.size());
    return channel.write(response.hasBody ? response.head(said) + response.body
                                          : response.opening + "\r\n");
}

} // namespace

WireFaults::WireFaults()
{
    if (::pipe2(stopPipe, O_CLOEXEC) != 0) {
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

bool WireFaults::wait(const Channel& channel, milliseconds duration) const
{
    return channel.rest(duration, stopPipe[0]);
}

bool WireFaults::drip(const Response& response, const Fault& fault, Channel& channel) const
{
    constexpr milliseconds usualPause(250);
    const auto bytes = static_cast<milliseconds::rep>(response.body.size());
    const milliseconds pause = fault.duration.count() == 0
                                   ? usualPause
                                   : std::max(fault.duration / bytes, milliseconds(1));
    return channel.write(response.head(response.body.size())) &&
           std::all_of(response.body.begin(), response.body.end(), [&](const char& byte) {
               return wait(channel, pause) && channel.write(QByteArrayView(&byte, 1));
           });
}

bool WireFaults::send(const Response& response, const std::optional<Fault>& fault,
                      Channel& channel) const
{
    if (!fault) {
        return sendWhole(response, channel);
    }
    Response spoiled = response;
    if (spoiled.body.isEmpty()) {
        spoiled.body = "\n"; // nothing could be cut or announced wrongly
    }
    switch (fault->kind) {
    case FaultKind::RequestLost:
    case FaultKind::ReplyLost:
        return false;
    case FaultKind::HangBeforeHeaders:
        static_cast<void>(wait(channel, fault->duration));
        return false;
    case FaultKind::Delay:
        static_cast<void>(wait(channel, fault->duration));
        return sendWhole(response, channel);
    case FaultKind::HangAfterHeaders:
    case FaultKind::SlowDrip:
    case FaultKind::CutBody:
    case FaultKind::LengthTooLarge:
    case FaultKind::LengthTooSmall:
    case FaultKind::GarbledHeaders:
        return sendSpoiled(spoiled, *fault, channel);
    default:
        return sendWhole(response, channel); // happened already, or is no request's fault
    }
}

bool WireFaults::sendSpoiled(const Response& response, const Fault& fault, Channel& channel) const
{
    const QByteArray& body = response.body;
    switch (fault.kind) {
    case FaultKind::SlowDrip:
        return drip(response, fault, channel);
    case FaultKind::LengthTooSmall:
        return channel.write(response.head((body.size() + 1) / 2) + body);
    case FaultKind::CutBody:
        channel.write(response.head(body.size()) + body.first(body.size() / 2));
        return false;
    case FaultKind::LengthTooLarge:
        channel.write(response.head(body.size() + lengthError) + body);
        static_cast<void>(wait(channel, fault.duration));
        return false;
    case FaultKind::HangAfterHeaders:
        channel.write(response.head(body.size()));
        static_cast<void>(wait(channel, fault.duration));
        return false;
    default: // no answer of HTTP at all
        channel.write("\x15\x03\x01 this is no answer\r\n\r\n");
        return false;
    }
}

} // namespace simulator
