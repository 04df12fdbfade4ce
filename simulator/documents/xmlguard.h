// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <optional>

namespace simulator {

/// Limits that hold before text is given to the XML parser, whose cost is not linear beyond them.
inline constexpr int maximumDepth = 64;
inline constexpr int maximumAttributes = 64;
inline constexpr int maximumElements = 500'000;

/// Names of elements and attributes; the parser's dictionary of them grows no further. Counted by
/// the parser.
inline constexpr int maximumNames = 10'000;

/// Walks over XML text once, without parsing it, and returns one sentence when it holds a document
/// type declaration, is nested deeper, has more elements or more attributes on one element than
/// the limits allow. Text that is not well-formed may pass: the parser rejects it.
std::optional<QString> xmlObjection(QStringView text);

} // namespace simulator
