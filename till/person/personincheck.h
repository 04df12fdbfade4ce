// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/person/person.h"

#include <QString>

namespace till {

struct Check;
class PersonMask;

/// Who a check is about, and the check without.
namespace personincheck {

/// The card of a check, the name beside it, and those that a kept answer of the server gives.
People of(const Check& check);

/// The same check with the people masked: card records, messages, the refusal, the plug-in's data
/// and the names of impacts. Lines, amounts, times, identifiers and states stay.
Check masked(const Check& check, const PersonMask& mask);

} // namespace personincheck

/// The names in a server's answer or a request: what stands in its elements for names, telephones,
/// addresses and days of birth.
QSet<QString> namesInMarkup(const QString& text);

} // namespace till
