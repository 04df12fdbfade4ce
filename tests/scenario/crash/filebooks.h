// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/database.h"
#include "store/sharedbooks.h"

#include <QSharedPointer>

/// What tills share of returns, in the file of a FileStore, so that a till can be stopped at each
/// call while it reserves. It knows no sales: those here are the till's own. Suspended checks and
/// reading are refused.
class FileBooks : public orvastore::SharedBooks
{
public:
    void open(const orvastore::StoreSettings& given) override { settings = given; }
    void interrupt() override {}
    void allow(std::chrono::milliseconds) override {}

    orvastore::SaleToReturn saleToReturn(const QString& shop, const QString& which) override;
    orvastore::StoreResult reserve(const orvastore::Reservation& reservation) override;
    orvastore::StoreResult release(const QString& shop, const QString& identifier) override;

    orvastore::StoreResult leave(const orvastore::LeftCheck&) override { return refusal(); }
    orvastore::TakeUp takeUp(const QString&, const QString&, const QString&,
                             const QString&) override
    {
        return {refusal(), {}};
    }
    orvastore::StoreResult settleTakeUp(const QString&, const QString&) override
    {
        return refusal();
    }
    orvastore::StoreResult
    forEachLeft(const QString&, const std::function<void(const orvastore::LeftCheck&)>&) override
    {
        return refusal();
    }
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
