// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// Numbers of cards as people see them.
namespace till::cardnumber {

/// How many digits of a number are shown.
inline constexpr qsizetype shownDigits = 4;

/// The last four digits, "****0017": what is shown is sent on to others, and the card is its
/// owner's.
QString shortened(const QString& number);

/// Whether it is a number that was shortened: nobody can be asked about that card any more.
bool isShortened(const QString& number);

} // namespace till::cardnumber
