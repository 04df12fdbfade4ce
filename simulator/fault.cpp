// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/fault.h"

#include <algorithm>
#include <array>

namespace simulator {
namespace {

using enum FaultKind;
using enum FaultStage;

constexpr bool noStatus = false;
constexpr bool noSeconds = false;
constexpr bool withStatus = true;
constexpr bool withSeconds = true;

constexpr std::array descriptions{
    FaultDescription{RefusedConnection, "refused-connection", Connecting,
                     "nobody listens at the address", noStatus, noSeconds},
    FaultDescription{HangingResolution, "hanging-resolution", Connecting,
                     "the name server does not answer", noStatus, noSeconds},
    FaultDescription{WrongCertificate, "wrong-certificate", Connecting,
                     "the certificate is for another name or from an unknown authority", noStatus,
                     noSeconds},
    FaultDescription{RequestLost, "request-lost", BeforeBooking,
                     "the connection is closed, the request was not looked at", noStatus,
                     noSeconds},
    FaultDescription{HangBeforeHeaders, "hang-before-headers", BeforeBooking,
                     "nothing is done and nothing comes", noStatus, withSeconds},
    FaultDescription{Status, "status", BeforeBooking, "nothing is done, a status is answered",
                     withStatus, noSeconds},
    FaultDescription{StatusAfterBooking, "status-after-booking", AfterBooking,
                     "it is done, but another status is answered", withStatus, noSeconds},
    FaultDescription{ReplyLost, "reply-lost", AfterBooking,
                     "it is done, the connection is closed without an answer", noStatus, noSeconds},
    FaultDescription{Delay, "delay", AfterBooking, "it is done, the answer comes late", noStatus,
                     withSeconds},
    FaultDescription{HangAfterHeaders, "hang-after-headers", AfterBooking,
                     "the headers come, the body does not", noStatus, withSeconds},
    FaultDescription{SlowDrip, "slow-drip", AfterBooking, "the body comes byte by byte", noStatus,
                     withSeconds},
    FaultDescription{CutBody, "cut-body", AfterBooking,
                     "the connection is closed in the middle of the body", noStatus, noSeconds},
    FaultDescription{LengthTooLarge, "length-too-large", AfterBooking,
                     "more bytes are announced than come", noStatus, withSeconds},
    FaultDescription{LengthTooSmall, "length-too-small", AfterBooking,
                     "half of the bytes are announced that come", noStatus, noSeconds},
    FaultDescription{GarbledHeaders, "garbled-headers", AfterBooking,
                     "what comes is no HTTP at all", noStatus, noSeconds},
    FaultDescription{GarbledBody, "garbled-body", AfterBooking, "bytes of the body are changed",
                     noStatus, noSeconds},
    FaultDescription{WrongEncoding, "wrong-encoding", AfterBooking,
                     "the body is windows-1251 and says that it is UTF-8", noStatus, noSeconds},
    FaultDescription{DuplicatedDelivery, "duplicated-delivery", AfterBooking,
                     "the request arrives twice, the first answer comes back", noStatus, noSeconds},
    FaultDescription{ResentByProxy, "resent-by-proxy", AfterBooking,
                     "the request arrives twice, the second answer comes back", noStatus,
                     noSeconds},
};

constexpr bool isInOrder()
{
    for (size_t i = 0; i < descriptions.size(); ++i) {
        if (static_cast<size_t>(descriptions[i].kind) != i) {
            return false;
        }
    }
    return true;
}
static_assert(isInOrder(), "describe finds a kind by its number");

} // namespace

std::span<const FaultDescription> faultDescriptions()
{
    return descriptions;
}

const FaultDescription& describe(FaultKind kind)
{
    return descriptions.at(static_cast<size_t>(kind));
}

std::optional<FaultKind> faultKind(const QString& name)
{
    const auto* const found =
        std::find_if(descriptions.begin(), descriptions.end(),
                     [&](const auto& row) { return name == QLatin1StringView(row.name); });
    return found == descriptions.end() ? std::nullopt : std::optional(found->kind);
}

QStringList requestFaultNames()
{
    QStringList names;
    for (const FaultDescription& row : descriptions) {
        if (row.stage != Connecting) {
            names.append(QString::fromLatin1(row.name));
        }
    }
    return names;
}

} // namespace simulator
