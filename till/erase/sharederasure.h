// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/erase/customer.h"
#include "till/erase/erasurereport.h"

#include <QStringList>

namespace till {

class SharedStore;

/// Takes a customer out of the shop's checks in the store. Only what is delivered is changed;
/// suspended checks and those that wait for their delivery are left and told.
class SharedErasure
{
public:
    /// Both must live longer.
    SharedErasure(SharedStore& shared, Customer& who) : store(shared), customer(who) {}

    /// Learns the names, check by check.
    void look();
    /// @throws nothing: what cannot be reached is told
    void erase(ErasureReport& report);

private:
    void eraseCheck(const QString& identifier, ErasureReport& report);

    SharedStore& store;
    Customer& customer;
    QStringList about; ///< identifiers of the customer's closed checks
    QString trouble;   ///< why not all were looked through
    QStringList left;
};

} // namespace till
