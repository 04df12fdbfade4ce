// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <limits>

namespace simulator {

/// Bytes of a file that an answer is read from: far more than a till takes, so that too much can be
/// tried.
inline constexpr qint64 maximumAnswerFile = 64 * 1024 * 1024;

/// A finished answer and the requests that get it: those that match all that is said here.
struct CannedAnswer
{
    static constexpr int always = std::numeric_limits<int>::max();

    QString endpoint;     ///< "precheck", "paymenttry" or "checkconfirm"; empty: any
    QString card;         ///< the check's card; empty: any
    int firstRequest = 1; ///< the first request that gets it, counted among the matching ones
    int times = always;   ///< how many requests get it at most
    int status = 200;
    QByteArray body; ///< sent as it stands
};

} // namespace simulator
