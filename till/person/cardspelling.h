// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// The ways in which one card's number is written: plain, in groups, with zeros before it, or as a
/// reader gives its tracks.
namespace till::cardspelling {

/// Shorter numbers cannot be told from sums, codes and positions in a text.
inline constexpr qsizetype shortest = 6;

/// The number without what people and readers put around and between it.
QString plain(const QString& written);

/// A regular expression that finds every spelling of a number, a track's further data included.
/// @param plainNumber at least `shortest` characters
QString pattern(const QString& plainNumber);

} // namespace till::cardspelling
