// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/unit/contract/watch/watchedhost.h"

#include <QList>
#include <QString>

namespace tests {

/// A host with one mistake, and what must be found in it: the rule and the call.
struct BrokenHost
{
    const char* mistake;
    const char* found;
    void (*run)(WatchedHost& host);
};

/// At least one for each rule.
const QList<BrokenHost>& brokenHosts();

} // namespace tests
