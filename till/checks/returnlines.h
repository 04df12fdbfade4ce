// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"

#include <QList>

/// What a return takes back of its sale.
namespace till::returnlines {

/// The lines of a return: for each wanted line (its position and returned quantity are read) the
/// returned part of the sale's line. Sum, discount, points given back and points taken back are
/// shares by quantity, rounded half up over all returns together: what has been returned of the
/// line up to now, less what earlier returns took. So any sequence of returns of a whole line adds
/// up to exactly the line.
/// @param earlier the sale's closed returns
/// @throws Failure (Usage) for a position that the sale does not have and for more than is left
QList<Line> of(const Check& sale, const QList<Check>& earlier, const QList<Line>& wanted);

} // namespace till::returnlines
