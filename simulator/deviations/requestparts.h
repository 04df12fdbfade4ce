// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/deviations/deviation.h"

namespace simulator {

/// What a deviation asks about a request. All empty for a body that is no document.
struct RequestParts
{
    explicit RequestParts(const Request& request);

    QString endpoint;
    QString checkId;
    QString card;
    QString type; ///< chType
    QString date;
    size_t lines = 0;
    bool isDocument = false;
};

/// The same request to another address.
/// endpoint: one of endpoints
Request readdressed(Request request, QLatin1StringView endpoint);

/// The same request for a check with another identifier. The body must be a document.
Request renamed(Request request, const QString& checkId);

/// The answer 200 that a request would have if nothing were wrong with it: an answer without grants
/// and with the card's true balance, 0.00 where sound does not know the card, or an
/// acknowledgement. Nothing is booked.
Answer acceptance(const Request& request, const Handler& sound);

/// The sound answer, or acceptance where that is a refusal with these words in its reason, and
/// where that happened to its check before.
Answer unless(const Request& request, const Handler& sound, Notes& notes, QLatin1StringView reason);

} // namespace simulator
