// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// What every program tells the shell. What only one of them has to tell begins with 3.
namespace console::exitcode {

inline constexpr int ok = 0;
/// What was asked for failed.
inline constexpr int failed = 1;
/// The command line or a file that a person has written cannot be used.
inline constexpr int usage = 2;

} // namespace console::exitcode
