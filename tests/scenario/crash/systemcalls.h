// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>
#include <sys/types.h>

/// The kernel's calls themselves, past the functions of the same names that the preloaded library
/// puts in front of them.
namespace system_calls {

int open(const char* path, int flags, mode_t mode = 0);
ssize_t pwrite(int file, const void* content, size_t length, off_t offset);
int ftruncate(int file, off_t length);
int unlink(const char* path);
int rename(const char* from, const char* to);
int link(const char* from, const char* to);
int mkdir(const char* path, mode_t mode);

/// The path that an open descriptor was opened by, as the kernel knows it now.
std::string pathOf(int file);

} // namespace system_calls
