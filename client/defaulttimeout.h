// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace orva {

/// How long the server is waited for, in seconds, where the configuration does not say. The
/// plug-in's key sheet tells hosts the same, and a test holds it to this.
inline constexpr int defaultTimeoutSeconds = 10;

} // namespace orva
