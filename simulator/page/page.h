// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/page/exchangebook.h"
#include "simulator/page/exchangeroutes.h"
#include "simulator/page/rulesstate.h"
#include "simulator/page/serverswitch.h"

namespace simulator {

class AdminDesk;
class FaultPlan;
class Service;

/// What the page shows beside the books and the faults, and its addresses.
struct Page
{
    /// books: the file of the books, beside which the exchanges lie; rulesFile: empty for the
    /// built-in rules
    Page(const QString& books, const QString& rulesFile);

    /// Adds the page and everything that it does to what can be asked. The page, the service and
    /// the plan must outlive the desk.
    void addTo(AdminDesk& desk, Service& service, FaultPlan& plan, Sender send);

    const QString database;
    ExchangeBook exchanges;
    RulesState rules;
    ServerSwitch server;
};

} // namespace simulator
