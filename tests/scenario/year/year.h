// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/year/options.h"

#include <QString>

namespace year {

/// How a year ended.
struct Outcome
{
    bool sound = false; ///< no violation, and nothing is missing in the end
    QString report;     ///< for people; with the violation when there was one
    QString digest;     ///< of the journal
};

/// Lives through a year in a folder of its own.
/// @throws std::exception when files cannot be made or written
Outcome live(const Options& options);

} // namespace year
