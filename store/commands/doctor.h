// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/output.h"
#include "store/storeclient.h"

namespace orvastore {

class Connection;

/// Looks at a store and says what is wrong with it, a line for each check. Changes nothing.
class Doctor
{
public:
    Doctor(const StoreSettings& given, console::Output& output) : settings(given), out(output) {}

    /// @return whether all is well
    bool run();

private:
    void say(bool isWell, const QString& sentence);
    void lookAtDurability(Connection& connection);
    void lookAtDays(Connection& connection);
    void lookAtQueue(Connection& connection);
    void lookAtReturns(Connection& connection);
    void lookAtSnapshots(Connection& connection);

    const StoreSettings settings;
    console::Output& out;
    bool allIsWell = true;
};

} // namespace orvastore
