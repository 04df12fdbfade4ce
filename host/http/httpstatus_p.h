// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// Where the kinds of HTTP statuses begin. What a status means for a message of the queue says the
/// table of deliverypolicy.
namespace poshost::httpstatus {

/// Those before are no answers yet.
inline constexpr int firstFinal = 200;
/// From here on a request is refused or has failed.
inline constexpr int firstError = 400;

} // namespace poshost::httpstatus
