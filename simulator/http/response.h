// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

namespace simulator {

/// An answer as it goes over the wire.
struct Response
{
    /// What stands before the body, for a body of that many bytes.
    [[nodiscard]] QByteArray head(qsizetype announced) const;

    QByteArray opening; ///< the first line and all headers but the length, each with its end
    QByteArray body;
    std::optional<qsizetype> saidLength = {}; ///< a length that is said instead of the body's
    bool hasBody = true;                      ///< false: neither a body nor its length is sent
};

/// The response to a request of that method. closes: the connection ends after it.
Response responseFor(const Answer& answer, const QByteArray& method, bool closes);

} // namespace simulator
