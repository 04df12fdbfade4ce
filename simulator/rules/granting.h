// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/check.h"
#include "simulator/documents/grant.h"
#include "simulator/rules/rules.h"

namespace simulator {

/// Works out what the rules grant on a sale, for a card with that balance.
///
/// Percentages are rounded half up to kopecks. A discount never brings a line below its least
/// total. Then the check is rounded down to a multiple of the rules' step: the difference goes to
/// the line with the most left after its discount (the first of equals) that has room for the
/// whole of it above its least total; there is none when no line has, or when nothing would be
/// left to pay. Points are earned and may be spent on what is left of a line.
Grant grantSale(const Rules& rules, const Check& check, Kopecks balance);

} // namespace simulator
