// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"
#include "till/explain/explanation.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

class CheckStore;
class RecordFolder;

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

    /// A return's sale with what was taken back of it before.
    struct Origin
    {
        Check sale;
        QList<Check> earlier;
    };
    /// Where else than in this till's file returns are looked up: at other tills of the shop.
    /// @param find gives nothing when it does not know the sale, and may throw Failure
    void lookElsewhere(const std::function<std::optional<Origin>(const Check& back)>& find)
    {
        elsewhere = find;
    }

    /// @throws Failure when there is nothing that the check could be explained from, or a return's
    /// sale is not there
    Explanation explain(const Check& check) const;

private:
    Exchange exchangeOf(const Check& check) const;
    Explanation explainSale(const Check& check) const;
    Explanation explainReturn(const Check& check) const;
    Origin originOf(const Check& back) const;

    CheckStore& store;
    poshost::Database& till;
    const RecordFolder* records;
    QString config;
    std::function<std::optional<Origin>(const Check&)> elsewhere;
};

} // namespace till
