// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/allocations.h"

#include <cstddef>

// The C library's own functions under their other names. The program's definitions below come
// before the library's for every caller in the process.
extern "C" {
void* __libc_malloc(size_t bytes);
void* __libc_calloc(size_t count, size_t bytes);
void* __libc_realloc(void* memory, size_t bytes);
}

namespace {

thread_local qint64 allocations = 0;

} // namespace

extern "C" {

__attribute__((visibility("default"))) void* malloc(size_t bytes)
{
    ++allocations;
    return __libc_malloc(bytes);
}

__attribute__((visibility("default"))) void* calloc(size_t count, size_t bytes)
{
    ++allocations;
    return __libc_calloc(count, bytes);
}

__attribute__((visibility("default"))) void* realloc(void* memory, size_t bytes)
{
    ++allocations;
    return __libc_realloc(memory, bytes);
}
}

namespace bench {

qint64 countAllocations(const std::function<void()>& work)
{
    const qint64 before = allocations;
    work();
    return allocations - before;
}

} // namespace bench
