// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/closedcheck.h"
#include "till/checks/check.h"

namespace till {

/// What a return takes of the lines of its sale.
QList<orvastore::ReturnedLine> returnedLinesOf(const Check& check);

/// The closed check of a message, as it is handed over to a store: its content as it stands in the
/// file, which is looked at where it is taken up again.
/// @throws BasicException "databaseError"
std::optional<poshost::ClosedCheck> readClosedCheck(poshost::Database& database, qint64 messageId);
/// The same of a check without a message, by its identifier.
std::optional<poshost::ClosedCheck> readClosedCheck(poshost::Database& database,
                                                    const QString& checkId);

} // namespace till
