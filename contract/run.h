// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace contract {

class HostUnderTest;

/// Tests the promises of the contract headers on a host and prints which of them it breaks. Takes
/// GoogleTest's arguments; make a QCoreApplication before. Call it once in a program.
/// @return 0 when all are kept, else 1
int run(int& argc, char** argv, HostUnderTest& host);

} // namespace contract
