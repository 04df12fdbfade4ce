// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"

#include <QString>

namespace poshost {
class Statement;
} // namespace poshost

namespace till::checkrow {

/// What read takes a check from.
inline const QString select =
    QStringLiteral("SELECT data, id, number, type, sale_id FROM checks WHERE ");
/// Who was changed last is told by the number of the change: clocks are put right.
inline const QString lastFirst = QStringLiteral(" ORDER BY change_number DESC");

/// The check of a row of select: what is read from the file is looked at here and nowhere else.
/// @throws Failure when it is damaged, or its columns and its content are not of one check
Check read(const poshost::Statement& row);

} // namespace till::checkrow
