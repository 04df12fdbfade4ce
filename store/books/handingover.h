// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/storeclient.h"

namespace orvastore {

class Connection;

/// Hands one check over in one transaction. @throws StoreError, whose certainty says whether it may
/// be in the store now
void handOver(Connection& connection, const HandedCheck& check);
/// Writes down that a till has handed over just now, for those who look at how the store stands; a
/// transaction of its own. @throws StoreError
void noteTill(Connection& connection, const QString& shop, const QString& till);

} // namespace orvastore
