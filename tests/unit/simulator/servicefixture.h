// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/ledger/ledgerprinter.h"
#include "simulator/service.h"
#include "tests/unit/simulator/testchecks.h"

#include <QDir>
#include <QTemporaryDir>

namespace simulator::test {

/// A service with the built-in rules on a database in a folder named after the test.
class ServiceFixture : public testing::Test
{
protected:
    ServiceFixture() { reopen(); }

    /// Ends the service, as a stop of the program does, and makes a new one on the same database.
    void reopen(const Rules& rules = builtIn())
    {
        service.reset();
        service = std::make_unique<Service>(rules, databasePath());
    }

    [[nodiscard]] QString databasePath() const
    {
        return folder.filePath(QStringLiteral("simulator.sqlite"));
    }

    Answer precheck(const QByteArray& body) { return service->handle(post("precheck", body)); }
    Answer paymentTry(const QByteArray& body) { return service->handle(post("paymenttry", body)); }
    Answer confirm(const QByteArray& body) { return service->handle(post("checkconfirm", body)); }

    /// Takes a sale of card 2200000000017 through all steps: 100.00 and 60.00 (codes 1000 and 1001;
    /// discounts 5.00 and 6.00, earning 4.75 and 2.70), of which 47.00 and 7.00 are paid by points.
    void sell(const QString& id);

    [[nodiscard]] LedgerView ledger() const
    {
        Database database(databasePath());
        return readLedger(database, builtIn());
    }

    [[nodiscard]] Account account(const QString& card) const;

    QTemporaryDir folder{
        QDir::tempPath() + u'/' +
        QString::fromUtf8(testing::UnitTest::GetInstance()->current_test_info()->name()) +
        QStringLiteral("-XXXXXX")};
    std::unique_ptr<Service> service;
};

/// A sale of two lines as sell() makes it.
TextCheck saleOfTwo(const QString& id);

} // namespace simulator::test
