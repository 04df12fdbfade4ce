// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The calls that change names: of files that go, of files and folders that are called otherwise or
// have two names, of new folders.

#include "tests/scenario/crash/crashpoint.h"
#include "tests/scenario/crash/systemcalls.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// Makes a name of something by a call that returns 0 where it has.
template <typename Call>
int makeName(const char* name, const std::string& path, const Call& call)
{
    crash_point::called(name, path);
    int done = -1;
    const bool noted = crash_point::change(path, [&](PowerCut& disk) {
        done = call();
        if (done == 0) {
            disk.created(path);
        }
    });
    return noted ? done : call();
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

int unlink(const char* name) noexcept
{
    const std::string path = crash_point::absolute(name);
    crash_point::called("unlink", path);
    int done = -1;
    const bool noted =
        crash_point::change(path, [&](PowerCut& disk) { done = disk.remove(path) ? 0 : -1; });
    return noted ? done : system_calls::unlink(name);
}

int rename(const char* from, const char* to) noexcept
{
    const std::string path = crash_point::absolute(to);
    crash_point::called("rename", path);
    int done = -1;
    const bool noted = crash_point::change(path, [&](PowerCut& disk) {
        done = disk.move(crash_point::absolute(from), path) ? 0 : -1;
    });
    return noted ? done : system_calls::rename(from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept
{
    const bool isPlain = fromFolder == AT_FDCWD && toFolder == AT_FDCWD;
    const bool mayReplace = (flags & 1U) == 0; // RENAME_NOREPLACE
    if (isPlain && flags <= 1 && (mayReplace || ::access(to, F_OK) != 0)) {
        return rename(from, to);
    }
    return int(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

int link(const char* from, const char* to) noexcept
{
    return makeName("link", crash_point::absolute(to),
                    [&] { return system_calls::link(from, to); });
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept
{
    const auto call = [&] {
        return int(::syscall(SYS_linkat, fromFolder, from, toFolder, to, flags));
    };
    return toFolder == AT_FDCWD ? makeName("link", crash_point::absolute(to), call) : call();
}

int mkdir(const char* name, mode_t mode) noexcept
{
    return makeName("mkdir", crash_point::absolute(name),
                    [&] { return system_calls::mkdir(name, mode); });
}

} // extern "C"
#pragma GCC visibility pop
