// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

namespace till {

/// What the loyalty system has said about a check. The values are kept in the database.
enum class LoyaltyState : qint32
{
    /// There is no card, so nobody is asked.
    NoCard = 0,
    /// There is a card, but the check has changed since the last request, or none was made.
    Unasked = 1,
    /// The request succeeded for the check as it stands, or the state was restored.
    Ready = 2,
    /// The system refused or could not be reached: the check goes on without it.
    Refused = 3,
};

} // namespace till
