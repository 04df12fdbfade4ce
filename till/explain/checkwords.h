// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"
#include "till/explain/explanation.h"

/// What sales and returns have in common: the words of the loyalty system about the whole check.
namespace till::checkwords {

/// The balance that the slip shows, if it shows one.
void explainBalance(const Check& check, const protocol::Findings& answer, Explanation& explanation);
/// Messages on the check without an element, and elements without a message.
void explainMessages(const Check& check, const protocol::Findings& answer,
                     Explanation& explanation);

/// Notes a problem unless the amount is as expected.
/// @param says who expects it, such as "the answer says"
void require(ExplainedAmount& amount, qint64 expected, const QString& says);

} // namespace till::checkwords
