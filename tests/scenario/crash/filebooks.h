// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/database.h"
#include "tests/scenario/crash/filesuspended.h"

#include <QSharedPointer>

/// What tills share of returns, in the file of a FileStore, so that a till can be stopped at each
/// call while it reserves. It knows no sales: those here are the till's own. Reading is refused.
class FileBooks : public FileSuspended
{
public:
    void open(const orvastore::StoreSettings& given) override
    {
        settings = given;
        FileSuspended::open(given);
    }

    orvastore::SaleToReturn saleToReturn(const QString& shop, const QString& which) override;
    orvastore::StoreResult reserve(const orvastore::Reservation& reservation) override;
    orvastore::StoreResult release(const QString& shop, const QString& identifier) override;
    orvastore::StoreResult settleReturn(const QString& shop, const QString& identifier) override;

    orvastore::StoreResult keep(const orvastore::HandedCheck& check) override;

    orvastore::StoreResult
    forEachCheck(const QString&, const QString&,
                 const std::function<bool(const orvastore::KeptCheck&)>&) override
    {
        return refusal();
    }
    orvastore::StoreResult findChecks(const QString&, const QString&,
                                      QList<orvastore::KeptCheck>&) override
    {
        return refusal();
    }
    orvastore::StoreResult rewrite(const QString&, const QString&, const QByteArray&) override
    {
        return refusal();
    }

    /// Makes what is missing in the file of a store.
    static void makeTable(poshost::Database& database);
    /// What a check that is handed over takes is taken for good; in its transaction.
    static void settle(poshost::Database& database, const orvastore::HandedCheck& check);

private:
    static orvastore::StoreResult refusal();
    bool reach();
    QString stateOf(const QString& identifier);
    orvastore::StoreResult reserveHere(const orvastore::Reservation& reservation);

    orvastore::StoreSettings settings;
    QSharedPointer<poshost::Database> database;
    bool isUnanswered = false;
};
