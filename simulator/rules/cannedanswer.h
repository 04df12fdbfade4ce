// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/rules/requestmatch.h"

#include <QByteArray>

namespace simulator {

/// Bytes of a file that an answer is read from: far more than a till takes, so that too much can be
/// tried.
inline constexpr qint64 maximumAnswerFile = 64 * 1024 * 1024;

/// A finished answer and the requests that get it: those that match all that is said here.
struct CannedAnswer : RequestMatch
{
    int status = 200;
    QByteArray body; ///< sent as it stands
};

} // namespace simulator
