// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/closedcheck.h"

namespace till {

/// The closed check of a message, as it is handed over to a store: its content as it stands in the
/// file, which is looked at where it is taken up again.
/// @throws BasicException "databaseError"
std::optional<poshost::ClosedCheck> readClosedCheck(poshost::Database& database, qint64 messageId);

} // namespace till
