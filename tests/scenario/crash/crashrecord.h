// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <atomic>
#include <cstdint>

/// A page of memory shared by the matrix and the programs that it stops: the preloaded library
/// counts here across all processes that one scene starts one after another. A file of this size,
/// filled with zeros, is a fresh record.
struct CrashRecord
{
    /// The calls so far that write, sync, send or receive.
    std::atomic<std::uint64_t> calls;
    /// 1 as soon as a process was stopped here; it then stops no other.
    std::atomic<std::uint32_t> stopped;
    /// The call before which that happened, as in "pwrite till.sqlite-wal".
    char at[116];
};

static_assert(std::atomic<std::uint64_t>::is_always_lock_free);
static_assert(sizeof(CrashRecord) == 128);
