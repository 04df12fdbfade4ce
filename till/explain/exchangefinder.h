// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/explain/explanation.h"

namespace poshost {
class Database;
} // namespace poshost

namespace till {

class CheckStore;
class RecordFolder;
struct Check;

/// Finds the documents that explain a check: first in the records, then in what the check itself
/// and the queue keep.
class ExchangeFinder
{
public:
    /// @param records null when nothing is recorded
    ExchangeFinder(const RecordFolder* records, CheckStore& checks, poshost::Database& database)
        : folder(records), store(checks), till(database)
    {}

    Exchange find(const Check& check) const;

private:
    void findInRecords(const Check& check, Exchange& exchange) const;
    void compareWithKept(const Check& check, Exchange& exchange) const;
    void findInQueue(const Check& check, Exchange& exchange) const;

    const RecordFolder* folder;
    CheckStore& store;
    poshost::Database& till;
};

} // namespace till
