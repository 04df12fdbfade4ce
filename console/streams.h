// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// The standard streams of a program, set up at its start.
namespace console::streams {

/// To be called first in main: a reader that goes away is told by a failing write and not by a
/// signal that ends the program between two steps, and no file takes the number of a standard
/// stream that the caller has closed.
void prepare();

/// Whatever Qt's logging writes from now on is one printable line a message. To be called once.
void keepLogPrintable();

} // namespace console::streams
