// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <exception>

namespace simulator {

/// Ends the handling of a request with an HTTP status from 400 up and one sentence that says why.
/// The sentence goes to the client and into the log: it never holds a full card number.
class Rejection : public std::exception
{
public:
    /// httpStatus: the HTTP status, 400 to 599; why: one sentence without a line break.
    Rejection(int httpStatus, const QString& why) : status(httpStatus), reason(why) {}

    [[nodiscard]] const char* what() const noexcept override { return "request rejected"; }

    const int status;
    const QString reason;
};

} // namespace simulator
