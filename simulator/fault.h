// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>
#include <span>

namespace simulator {

/// What can go wrong between a till and the loyalty server. Each has a name of small letters, which
/// stands in files of rules and in test output; the table of them is in fault.cpp.
enum class FaultKind
{
    RefusedConnection,
    HangingResolution,
    WrongCertificate,
    RequestLost,
    HangBeforeHeaders,
    Status,
    StatusAfterBooking,
    ReplyLost,
    Delay,
    HangAfterHeaders,
    SlowDrip,
    CutBody,
    LengthTooLarge,
    LengthTooSmall,
    GarbledHeaders,
    GarbledBody,
    WrongEncoding,
    DuplicatedDelivery,
    ResentByProxy,
};

/// How far a request has come when the fault strikes.
enum class FaultStage
{
    Connecting,    ///< no request ever gets through; a running server cannot make it
    BeforeBooking, ///< the server has not done what was asked
    AfterBooking,  ///< the server has done it
};

/// A row of the table of kinds.
struct FaultDescription
{
    FaultKind kind;
    const char* name;
    FaultStage stage;
    const char* what; ///< half a sentence: what happens
    bool hasStatus;   ///< whether the parameters status and body mean something
    bool hasSeconds;  ///< whether the parameter seconds means something
};

/// All kinds, in the order of a request's way.
std::span<const FaultDescription> faultDescriptions();

const FaultDescription& describe(FaultKind kind);

/// The kind of that name, or nothing.
std::optional<FaultKind> faultKind(const QString& name);

/// The names of the kinds that a running server can make for single requests.
QStringList requestFaultNames();

/// One fault with its parameters.
struct Fault
{
    FaultKind kind = FaultKind::ReplyLost;
    int status = 500; ///< of Status and StatusAfterBooking
    QByteArray body;  ///< of the same
    /// How long it lasts: a delay, a hang, the whole of a drip; 0 until the client gives up.
    std::chrono::milliseconds duration{0};
    quint64 random = 0; ///< what is made up of chance, such as garbled bytes, follows from it

    [[nodiscard]] FaultStage stage() const { return describe(kind).stage; }
    [[nodiscard]] QString name() const { return QString::fromLatin1(describe(kind).name); }
    /// Whether the server has done what was asked when the fault strikes.
    [[nodiscard]] bool isAfterBooking() const { return stage() == FaultStage::AfterBooking; }
};

} // namespace simulator
