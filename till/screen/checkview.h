// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"

#include <QString>

/// A check as people read it: lines, sums, messages.
namespace till::checkview {

/// How many characters fit on a line where nobody knows better.
inline constexpr int usualWidth = 80;

/// The open check for the cashier.
/// @param availableKopecks points that may be spent
/// @param width how many characters fit on a line
QString forCashier(const Check& check, qint64 availableKopecks, int width = usualWidth);

/// How a message with line breaks stands on a slip.
enum class Messages
{
    InOneLine, ///< where each line has a meaning of its own
    Wrapped,
};

/// The slip of a closed check for the customer. Messages are indented: no line of theirs looks like
/// one of the till's.
/// @param width how many characters fit on a line
QString slip(const Check& check, Messages form = Messages::Wrapped, int width = usualWidth);

/// A card's number as lists and slips show it: its last four digits, "****0017".
QString shortCard(const QString& number);

} // namespace till::checkview
