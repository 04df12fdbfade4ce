// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

namespace poshost {

class Database;

/// Makes what happens on one connection while it lives all or nothing.
///
/// A transaction inside another one of the same Database joins it: what it did becomes durable with
/// the outermost commit. A transaction that ends without commit, or a statement that fails inside
/// one, takes the outer ones with it: nothing can be executed or committed until the outermost one
/// has ended and rolled back.
class HOST_EXPORT Transaction
{
public:
    /// Begins. The right to write is taken at once and not at the first write, so that nobody else
    /// can get in between a read and the write that follows from it.
    /// @param database the connection; must live longer
    /// @throws BasicException "databaseError" when another connection keeps writing for longer than
    /// the busy time-out, or the joined transaction has failed; then nothing has begun.
    explicit Transaction(Database& database);
    /// Rolls back unless commit was called and succeeded.
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// Outermost: returns when everything is on the disk. Inner: leaves the decision to the
    /// outermost. Either way this one has ended: what follows is not part of it, and another
    /// call does nothing.
    /// @throws BasicException "databaseError" when it cannot be written; then all is rolled back.
    void commit();

private:
    Database& database;
    bool committed = false;
};

} // namespace poshost
