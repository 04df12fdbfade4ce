// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/fault.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>

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
    QByteArray pageToken = {}; ///< what the page of this program sends, see AdminGate
    QByteArray query = {};     ///< what stands behind "?" in the address, as it came
    std::chrono::steady_clock::time_point began = {}; ///< when its head was there
    quint64 connection = 0; ///< a number that all requests of its connection have, and no others
};

/// The body of an answer that goes on for as long as the client stays. It is asked again and again
/// for what has come since it was asked last, which may be nothing, and ends with no value. It is
/// asked in the thread of its connection and must not block.
using Stream = std::function<std::optional<QByteArray>()>;

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
    QByteArrayList headers = {};     ///< further ones, each as "Name: value"
    Stream stream = {};              ///< what follows the body, without an end; empty for nothing
    std::optional<QByteArray> date = {}; ///< a Date header instead of the present; empty for none
    std::optional<qsizetype> announced = {}; ///< a length that is said instead of the body's
    bool closesUnsaid = false; ///< the connection ends behind it, and no header says so
};

/// An answer that says why a request was not done.
Answer refusal(int status, const QString& reason);

} // namespace simulator
