// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

#include <functional>

namespace bench {

/// How often this thread allocates memory while the function runs: calls of malloc, calloc and
/// realloc, by whatever library. Programs that link this have their own allocation functions, which
/// count and pass the call on.
qint64 countAllocations(const std::function<void()>& work);

} // namespace bench
