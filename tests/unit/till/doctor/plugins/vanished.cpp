// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The library that a plug-in needs and nobody finds.

__attribute__((visibility("default"))) int vanished()
{
    return 1;
}
