// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/protocol/schemacheck.h"

namespace tests {

/// The documents of the exchange that stand in the tests and benchmarks: the XML files, and the
/// texts in the sources that are whole documents holding an element of the exchange. Texts that are
/// put together when a test runs are none. The name is the file's path below the project's folder.
std::vector<WireDocument> sourceDocuments();

/// The string literals of a C++ source, neighbours joined, escapes resolved, as UTF-8.
std::vector<QByteArray> stringLiterals(const QString& source);

} // namespace tests
