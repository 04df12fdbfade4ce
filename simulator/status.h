// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// Where the kinds of HTTP statuses that the server may answer with begin and end.
namespace simulator::status {

inline constexpr int first = 200;
inline constexpr int firstMoved = 300;
inline constexpr int firstRefusal = 400;
inline constexpr int last = 599;

} // namespace simulator::status
