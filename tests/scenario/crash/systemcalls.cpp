// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/systemcalls.h"

#include <array>
#include <climits>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace system_calls {

int open(const char* path, int flags, mode_t mode)
{
    return int(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

ssize_t pwrite(int file, const void* content, size_t length, off_t offset)
{
    return ::syscall(SYS_pwrite64, file, content, length, offset);
}

int ftruncate(int file, off_t length)
{
    return int(::syscall(SYS_ftruncate, file, length));
}

int unlink(const char* path)
{
    return int(::syscall(SYS_unlink, path));
}

int rename(const char* from, const char* to)
{
    return int(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int link(const char* from, const char* to)
{
    return int(::syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int mkdir(const char* path, mode_t mode)
{
    return int(::syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}

std::string pathOf(int file)
{
    std::array<char, PATH_MAX> target{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
    return length < 0 ? std::string() : std::string(target.data(), size_t(length));
}

} // namespace system_calls
