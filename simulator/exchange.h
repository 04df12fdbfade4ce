// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/fault.h"

#include <QByteArray>
#include <QString>

namespace simulator {

/// A request as it came over HTTP.
struct Request
{
    QByteArray method;
    QByteArray path; ///< decoded, without the query
    QByteArray authorization;
    QByteArray body;
    // the next three as they came, for an address that a web page must not use
    QByteArray host = {};
    QByteArray origin = {};
    QByteArray contentType = {};
};

/// What is sent back, and what the log says about it.
struct Answer
{
    int status = 200;
    QByteArray contentType;
    QByteArray body;
    QString checkId;          ///< for the log; empty when the request was not understood so far
    QString cardNumber;       ///< for the log, which shows its last four digits
    QString reason;           ///< one sentence for every status from 400 up that is no fault
    QByteArray location = {}; ///< where to look instead, with a status from 300 to 399
    std::optional<Fault> fault = {}; ///< what goes wrong on purpose; the server makes what it can
};

/// An answer that says why a request was not done.
Answer refusal(int status, const QString& reason);

} // namespace simulator
