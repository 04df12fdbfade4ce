// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/doctor/disk.h"

#include <atomic>
#include <dlfcn.h>
#include <sys/statvfs.h>

namespace {

std::atomic<quint64> freeBytes = 0;

} // namespace

void disk::setFree(quint64 bytes)
{
    freeBytes = bytes;
}

extern "C" __attribute__((visibility("default"))) int statvfs(const char* file,
                                                              struct statvfs* result) noexcept
{
    using Function = int (*)(const char*, struct statvfs*);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "statvfs"));
    const int code = real(file, result);
    if (freeBytes != 0) {
        result->f_bavail = freeBytes / result->f_frsize;
    }
    return code;
}
