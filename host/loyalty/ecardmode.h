// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// Whether a loyalty system works with cards that the host keeps or with cards of its own.
enum class ECardMode : int
{
    Internal = 0, ///< cards of the host
    External = 1, ///< the system's own, known to its server
};
