// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// The name server of this test program: a getaddrinfo that stands before the C library's. Names
/// below "orva.test" are this machine, but for "nobody.orva.test", which nobody has; everything
/// else is looked up as usual.
namespace resolver {

/// Leaves every question after a name below "orva.test" without an answer until letGo.
void hang();
/// Answers again. Questions that were left without an answer fail; waits until all have.
void letGo();
/// How many questions wait.
int waiting();

} // namespace resolver
