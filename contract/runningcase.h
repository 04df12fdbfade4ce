// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace contract {

/// Lets a program of GoogleTest name the test that it was running when it dies: by a fatal signal,
/// an abort (an exception that nobody catches, Qt's fatal messages), a call of exit(), or because
/// one test takes too long. What dies otherwise dies as before: signals go on to who handled them
/// until now. Call it once, after InitGoogleTest(), on the main thread.
/// @param seconds limit of one test, 0 for none; the program is aborted then
void nameTheCaseThatDies(unsigned seconds = 0);

} // namespace contract
