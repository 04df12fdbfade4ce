// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/gate.h"

#include <mutex>
#include <vector>

namespace tests {

/// Stands between till and server, passes every request on and keeps what was said.
class Recorder
{
public:
    /// @param server address of the server, ending with "/"
    explicit Recorder(const QString& server)
        : gate(server, {}, [this](const Exchange& exchange) {
              const std::scoped_lock lock(keeping);
              kept.push_back(exchange);
          })
    {}

    [[nodiscard]] QString address() const { return gate.address(); }
    /// All exchanges so far, in their order.
    [[nodiscard]] std::vector<Exchange> exchanges() const
    {
        const std::scoped_lock lock(keeping);
        return kept;
    }

private:
    mutable std::mutex keeping;
    std::vector<Exchange> kept;
    Gate gate; // last: it calls into the others from its thread
};

} // namespace tests
