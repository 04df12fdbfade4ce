// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/crash/powercut.h"

#include <functional>
#include <string>

/// The process's crash point, as the calls that change names use it. Any thread.
namespace crash_point {

/// A path as the files that count are told by it.
std::string absolute(const char* path);
/// Counts a call on a file of the folder, and stops the process where it is told to.
/// @param path an absolute one
void called(const char* name, const std::string& path);
/// Has a change done by what notes it for a power cut, while nobody else changes files.
/// @return false: nothing is to be noted, and change was not called
bool change(const std::string& path, const std::function<void(PowerCut&)>& change);

} // namespace crash_point
