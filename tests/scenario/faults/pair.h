// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/faults/faultrow.h"
#include "tests/scenario/faults/faultyserver.h"
#include "tests/scenario/faults/faultytill.h"
#include "tests/support/testfolder.h"

#include <functional>

/// One till and one server between which one fault strikes, and what the till said about it.
class Pair
{
public:
    /// How much longer than the time-out a call may take.
    static constexpr int toleranceMilliseconds = 250;

    /// @param number different for every pair of the process
    Pair(const FaultRow& row, int number);

    /// Does something that may wait for the server once, and expects it to end in time.
    void timed(const char* what, const std::function<void()>& call);
    /// Closes the check and keeps why it went on without the loyalty system.
    void close();
    /// The reason that the open check goes on without the loyalty system.
    void noteRefusal() { refusal = till.desk().current().refusal; }

    FaultRow row;

private:
    TestFolder folder; // before those that have their files in it

public:
    FaultyServer server;
    FaultyTill till;
    QString refusal;
};
