// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"
#include "host/hostexport.h"
#include "host/queue/deliverypolicy.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QUrl>

class RestClient;

namespace poshost {

/// What became of a request of a queued message.
struct DeliveryResult
{
    /// What the answer means.
    deliverypolicy::Meaning meaning = deliverypolicy::Meaning::ServerAway;
    int status = 0;                    ///< HTTP status, 0 without one
    Message error;                     ///< for people
    QString answer;                    ///< beginning of the server's answer
    qint64 retryAfterMilliseconds = 0; ///< how long the server asks to wait
    bool sentTwice = false; ///< the transport sent it again by itself: the first may have arrived

    /// Whether the server has said that it did not take the request: such an attempt must not make
    /// a later "known already" look like a success.
    /// @return false where it may have been taken
    HOST_EXPORT bool isRefusedForSure() const;
};

/// Sending what is queued: the same request and the same reading of the answer for whoever
/// delivers.
namespace requestsending {

/// Posts a message and reads what the answer means. Blocks as the client's post does; throws
/// nothing.
/// @param client with its time-out set
/// @param address of the step
/// @param payload the body as it is stored; it goes out as UTF-8
/// @param headers with the authorization
/// @param attemptedBefore whether the step may have reached the server earlier
/// @return what became of it
HOST_EXPORT DeliveryResult send(RestClient& client, const QUrl& address, const QByteArray& payload,
                                const QHash<QString, QString>& headers, bool attemptedBefore);

} // namespace requestsending

} // namespace poshost
