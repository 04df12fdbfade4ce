// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

#include <optional>

namespace simulator {

/// Who may use the address for administration. It needs no credentials, so it is reached over
/// loopback only. A web page that is open on the same machine can send requests there too, so
/// those are refused
///
/// - that name the machine by anything but a name of loopback (403: a name of the page's own may
///   lead there),
/// - that come from a page of another address (403),
/// - that would change something, come from a page and have not the token, which stands in the
///   page of this program only (403); scripts send no Origin and need none,
/// - that would change something and are no JSON, which a page cannot send without being let (415).
class AdminGate
{
public:
    /// Makes a token of its own by chance.
    AdminGate();

    /// Why a request is refused whatever its body is; nothing when it may pass. May be called from
    /// several threads at once.
    [[nodiscard]] std::optional<Answer> objection(const Request& request) const;

    /// What a page sends in X-Orva-Token: 32 letters and digits.
    [[nodiscard]] const QByteArray& pageToken() const { return token; }

private:
    const QByteArray token;
};

} // namespace simulator
