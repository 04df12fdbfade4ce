// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/check.h"
#include "simulator/documents/element.h"

namespace simulator {

/// Reads a check from a "RawCheck" document.
/// Throws Rejection: 400 with the element's path where an element is missing or unreadable, 424
/// where the values do not agree (a negative amount, two lines with one id, lines that do not add
/// up to the check's total). The price is not looked at: it is sent with six significant digits.
Check readCheck(const Element& root);

/// The text of a child that must be there; path names the parent in the message.
/// Throws Rejection with status 400 otherwise.
QString requiredText(const Element& parent, QLatin1StringView name, const QString& path = {});

/// An amount that must be readable and not negative. Throws Rejection with status 400 or 424.
Kopecks readAmount(const QString& text, const QString& path);

} // namespace simulator
