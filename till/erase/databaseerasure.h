// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/erase/customer.h"
#include "till/erase/erasurereport.h"

#include <QSet>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

class CheckStore;

/// Takes a customer out of a till's database and the archive beside it. All changes of the database
/// are one transaction; afterwards the file holds nothing of the former rows.
class DatabaseErasure
{
public:
    /// All must live longer.
    DatabaseErasure(poshost::Database& opened, CheckStore& checks, Customer& who)
        : database(opened), store(checks), customer(who)
    {}

    /// Learns the names. @return the undelivered messages that tell of the customer
    QList<qint64> look();
    /// Masks what may be masked. Suspended checks and undelivered messages with their checks are
    /// left.
    /// @throws BasicException when the database fails; then nothing in it has changed. Failure when
    /// the archive cannot be read or written; the database is done then
    void erase(ErasureReport& report);

private:
    void eraseChecks(ErasureReport& report);
    void eraseMessages(ErasureReport& report);
    void eraseArchive(ErasureReport& report);
    void eraseDeletedRows(ErasureReport& report);
    QSet<qint64> undelivered();

    poshost::Database& database;
    CheckStore& store;
    Customer& customer;
};

} // namespace till
