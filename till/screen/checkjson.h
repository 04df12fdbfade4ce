// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"

#include <QJsonObject>
#include <QStringList>

namespace till {

struct CheckRow;

/// Checks for programs: names and values are the same in every language, amounts and quantities are
/// texts that are exact, cards are their last four digits.
namespace checkjson {

/// One check with its lines, and what the cashier was told about it.
QJsonObject object(const Check& check, const QStringList& notes);

/// A row of the list of checks.
QJsonObject object(const CheckRow& row);

} // namespace checkjson
} // namespace till
