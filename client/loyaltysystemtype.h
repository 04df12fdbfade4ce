// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace orva {

/// This loyalty system's code in the host: finds its card record in a document and recognises its
/// own impacts.
inline constexpr int loyaltySystemType = 15;

} // namespace orva
