// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/check.h"

#include <QString>

/// A check as people read it: lines, sums, messages.
namespace till::checkview {

/// The open check for the cashier.
/// @param availableKopecks points that may be spent
QString forCashier(const Check& check, qint64 availableKopecks);

/// The slip of a closed check for the customer.
QString slip(const Check& check);

/// A card's number as lists and slips show it: its last four digits, "****0017".
QString shortCard(const QString& number);

} // namespace till::checkview
