// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/explain/explanation.h"

#include <QString>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

class CheckStore;
class RecordFolder;
struct Check;

/// Explains closed checks from what a till has of them: its records, its queue, the checks
/// themselves.
class CheckExplainer
{
public:
    /// @param recordFolder null when nothing is recorded; all must live longer
    /// @param configFile named where something has to be configured first
    CheckExplainer(CheckStore& checks, poshost::Database& database,
                   const RecordFolder* recordFolder, const QString& configFile)
        : store(checks), till(database), records(recordFolder), config(configFile)
    {}

    /// @throws Failure when there is nothing that the check could be explained from, or a return's
    /// sale is not there
    Explanation explain(const Check& check) const;

private:
    Exchange exchangeOf(const Check& check) const;
    Explanation explainSale(const Check& check) const;
    Explanation explainReturn(const Check& check) const;

    CheckStore& store;
    poshost::Database& till;
    const RecordFolder* records;
    QString config;
};

} // namespace till
