// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/faults/faultyservice.h"

namespace year {

/// A wrong booking that is planted to see that it is found.
enum class Plant
{
    None,
    BookTwice, ///< a confirmation is booked a second time under another identifier
    DropOne,   ///< a confirmation is answered with 200 and not booked
    DropPoint, ///< a card loses a kopeck that no check took
    RefuseOne, ///< a confirmation is refused as often as it comes
};

/// Stands before an honest server and does one thing wrong.
class Saboteur
{
public:
    /// @param confirmation the confirmation that it happens to, counted from 1
    Saboteur(QString serverDatabase, Plant what, int confirmation)
        : database(std::move(serverDatabase)), plant(what), at(confirmation)
    {}

    simulator::Answer handle(const simulator::Request& request,
                             const simulator::FaultyService::Handler& honest);

private:
    void bookTwin(const QString& checkId) const;
    void takeKopeck(const QString& card) const;

    const QString database;
    const Plant plant;
    const int at;
    int confirmations = 0;
    QByteArray refused; ///< the confirmation that is
};

} // namespace year
