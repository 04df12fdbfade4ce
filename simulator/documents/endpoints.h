// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QStringList>

/// What the server can be asked. The client has the addresses of its own: it is judged with these.
namespace simulator::endpoints {

inline constexpr QLatin1StringView precheck{"precheck"};
inline constexpr QLatin1StringView paymentTry{"paymenttry"};
inline constexpr QLatin1StringView checkConfirm{"checkconfirm"};

inline QStringList all()
{
    return {precheck, paymentTry, checkConfirm};
}

/// The address below the server's own.
inline QByteArray pathOf(QLatin1StringView endpoint)
{
    return QByteArray("/api/1.x/").append(endpoint.data(), endpoint.size());
}

} // namespace simulator::endpoints
