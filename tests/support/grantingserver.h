// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/fakeserver.h"

namespace tests {

/// FakeServer as a loyalty server: it carries the check back with 10 % discount on line 1, 9 points
/// for it, 40 points to spend on it, and messages.
class GrantingServer : public FakeServer
{
public:
    GrantingServer();

    /// Of the answers from now on.
    int status = 200;
    bool reachable = true;
};

} // namespace tests
