// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// Switches of a loyalty system; the values are the host's.
enum class LoyaltySystemOption : int
{
    /// Closing a check only queues its confirmation, so it does not need the server.
    ConfirmThroughQueue = 16,
};
