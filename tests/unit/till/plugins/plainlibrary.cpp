// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

/// A shared library that is no Qt plug-in.
extern "C" __attribute__((visibility("default"))) int plainLibraryAnswer();

int plainLibraryAnswer()
{
    return 42;
}
