// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/ledger/database.h"
#include "tests/support/books.h"

#include <QString>

#include <memory>
#include <vector>

namespace year {

class TillBox;

/// The messages that stay in the queues.
struct Remainder
{
    int unclear = 0; ///< booked, and the till cannot know by whom
    int behind = 0;  ///< returns that wait for such a sale
};

/// Holds the server's ledger and the tills' queues against the books. Reads the server's database
/// over a connection of its own and changes nothing.
class Auditor
{
public:
    /// The server has been started before.
    Auditor(tests::Books& books, const QString& serverDatabase,
            const std::vector<std::unique_ptr<TillBox>>& tills);

    /// After every event: the server's new bookings, the messages that are still to be delivered,
    /// and the balance of every card. @throws Violation
    void check();
    /// The server's ledger over all that ever happened. @throws Violation
    void checkLedger();
    /// What is still in the queues when all faults have ended. Every message in them must be one
    /// that the server has booked and answered with 409, while the till knows of no attempt that
    /// can have been taken (something on the way sent it twice, or hid the answer: a person must
    /// look), or a return that waits behind such a sale.
    /// @return how many there are of both. @throws Violation
    Remainder checkRemainder();
    /// All of that, and every closed check in the tills' files; no till is at work. @throws
    /// Violation
    void checkEverything();

private:
    void takeBookings();
    void takeDeliveries();
    void checkBalances();
    void checkTill(TillBox& till);

    tests::Books& books;
    simulator::Database server;
    const std::vector<std::unique_ptr<TillBox>>& tills;
    qint64 lastSequence = 0;
};

} // namespace year
