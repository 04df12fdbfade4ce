// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/database/storeerror.h"
#include "store/storeclient.h"

namespace orvastore {

/// @return how what was asked of the store has ended, after this error. Whatever only has to wait
/// is Unreachable, not Refused.
StoreEnd endOf(const StoreError& error);

} // namespace orvastore
