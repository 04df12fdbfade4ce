// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/queueentry.h"
#include "simulator/fault.h"

#include <ostream>
#include <vector>

/// A fault and what the till must make of it, by the rules that a cashier and a manager can read.
struct FaultRow
{
    const char* name; ///< the fault's, with what it carries
    simulator::Fault fault;

    /// What the cashier is told when a pre-check meets the fault; empty when it succeeds.
    const char* cashier;
    /// What the transport says about it behind "Сервер NAME: ", in the log and in the queue; empty
    /// when the transport sees nothing wrong. A "*" at the end stands for what the system adds.
    const char* transport;
    /// What stands in the queue when a delivery meets the fault; null for the transport's sentence,
    /// empty when the step is done.
    const char* queue;
    /// How the message stands then.
    poshost::QueueState state;

    bool isWell() const { return *cashier == '\0'; }
};

void PrintTo(const FaultRow& row, std::ostream* out);

/// The table; every kind of fault is in it.
const std::vector<FaultRow>& faultRows();

/// A fault of the table by its name.
const FaultRow& faultRow(const char* name);
