// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/storeclient.h"

#include <optional>

namespace till::doctor {

class Report;

/// What the till shares with others: the store ("store"). A till without one has no such line.
namespace storecheck {

/// How a store was found.
struct StoreLook
{
    poshost::Message problem;       ///< why it cannot be used as configured; empty when it can
    orvastore::StoreResult reached; ///< when there is no problem
};

/// Knocks at the configured store. Blocks up to a second; never throws.
StoreLook look();
/// @param found nothing when it was not looked at to the end in time
void check(Report& report, const std::optional<StoreLook>& found);

} // namespace storecheck

} // namespace till::doctor
