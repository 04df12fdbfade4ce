// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/check.h"
#include "simulator/documents/element.h"
#include "simulator/ledger/checkstore.h"
#include "simulator/ledger/habits.h"
#include "simulator/ledger/ledger.h"
#include "simulator/rules/rules.h"

#include <memory>

namespace simulator {

/// Takes a check through its three steps: pre-check, payment try and confirmation. Each step is one
/// transaction: what it answers is durable when it returns, and what it rejects has changed
/// nothing.
///
/// All operations throw Rejection (409 for a check that is booked already, 424 for one whose data
/// do not agree with what is known) and poshost::DatabaseFailure. An object may be used only in the
/// thread that made its database.
class CheckDesk
{
public:
    /// The database must outlive the desk. deskHabits: for a desk that is to book wrongly
    CheckDesk(std::shared_ptr<const Rules> deskRules, Database& database, Habits deskHabits = {});

    /// Answers what the check is granted. May be repeated until the check is booked.
    /// check: as read from request.
    Document precheck(const Check& check, const Element& request);

    /// Checks a payment against the answer that it was built from and keeps it. It may be repeated,
    /// and until the check is booked replaced by another one.
    void paymentTry(const Check& check, const Element& request);

    /// Books the check, exactly once. The request must be the one that was last tried.
    void confirm(const Check& check, const Element& request);

private:
    Document precheckSale(const Check& check, const Element& request);
    Document precheckReturn(const Check& check, const Element& request);
    [[nodiscard]] Booking saleBooking(const Check& check, const Element& answer,
                                      const Element& request);
    [[nodiscard]] Booking returnBooking(const Check& check) const;
    [[nodiscard]] Booking bookingOf(const Check& check, const Element& request);
    void rejectBooked(const Check& check) const;

    const std::shared_ptr<const Rules> rules;
    Database& db;
    const Habits habits;
    Ledger ledger;
    CheckStore store;
};

} // namespace simulator
