// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// Stands between SQLite and the file system of this process from the first use on and makes a
/// chosen access fail: opening, reading, writing, syncing, cutting, deleting and locking files.
namespace faultyvfs {

/// Becomes SQLite's way to the files for every connection opened from now on.
void install();
/// The n-th access from now on fails, counted from 1; those after it succeed again.
void failNth(int n);
/// Ends that.
/// @return whether the access to fail was reached
bool disarm();

} // namespace faultyvfs
