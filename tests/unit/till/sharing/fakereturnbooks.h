// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/storemodule_p.h"
#include "store/sharedbooks.h"

#include <QSharedPointer>
#include <QStringList>

/// Books of a shop's returns that answer as a test says, and write down what they are asked.
class FakeReturnBooks : public orvastore::SharedBooks
{
public:
    using End = orvastore::StoreEnd;

    void open(const orvastore::StoreSettings&) override {}
    void interrupt() override {}
    void allow(std::chrono::milliseconds altogether) override { allowed.append(altogether); }

    orvastore::SaleToReturn saleToReturn(const QString&, const QString& which) override
    {
        asked.append(QStringLiteral("find ") + which);
        return {result(finding), sales, returns};
    }
    orvastore::StoreResult reserve(const orvastore::Reservation& reservation) override
    {
        asked.append(QStringLiteral("reserve ") + reservation.identifier);
        reserved = reservation;
        if (whileReserving) {
            whileReserving();
        }
        orvastore::StoreResult ended = result(reserving);
        ended.isConflict = reserving == End::Refused;
        if (undecided > 0) {
            --undecided;
            ended = {End::Refused, poshost::Message::of(orvastore::undecidedReturn), true};
        }
        return ended;
    }
    orvastore::StoreResult release(const QString&, const QString& identifier) override
    {
        asked.append(QStringLiteral("release ") + identifier);
        return result(releasing);
    }

    orvastore::StoreResult settleReturn(const QString&, const QString& identifier) override
    {
        asked.append(QStringLiteral("settle ") + identifier);
        return result(releasing);
    }

    orvastore::StoreResult keep(const orvastore::HandedCheck& check) override
    {
        asked.append(QStringLiteral("keep ") + check.identifier);
        kept.append(check);
        orvastore::StoreResult ended = result(keeping);
        ended.isConflict = isConflict && keeping == End::Refused;
        return ended;
    }

    orvastore::StoreResult leave(const orvastore::LeftCheck&) override
    {
        return result(End::Refused);
    }
    orvastore::TakeUp takeUp(const QString&, const QString&, const QString&,
                             const QString&) override
    {
        return {};
    }
    orvastore::StoreResult settleTakeUp(const QString&, const QString&) override
    {
        return result(End::Refused);
    }
    orvastore::StoreResult
    forEachLeft(const QString&, const std::function<void(const orvastore::LeftCheck&)>&) override
    {
        return result(End::Refused);
    }
    orvastore::StoreResult
    forEachCheck(const QString&, const QString&,
                 const std::function<bool(const orvastore::KeptCheck&)>&) override
    {
        return result(End::Refused);
    }
    orvastore::StoreResult findChecks(const QString&, const QString&,
                                      QList<orvastore::KeptCheck>&) override
    {
        return result(End::Refused);
    }
    orvastore::StoreResult rewrite(const QString&, const QString&, const QByteArray&) override
    {
        return result(End::Refused);
    }

    static orvastore::StoreResult result(End end)
    {
        return {end, end == End::Done ? poshost::Message()
                                      : poshost::Message::plain(QStringLiteral("so it is"))};
    }

    End finding = End::Done;
    End reserving = End::Done;
    int undecided = 0; ///< so often another return is about to close when one is reserved
    End releasing = End::Done;
    End keeping = End::Done;
    bool isConflict = false; ///< of what is not kept
    QList<orvastore::HandedCheck> kept;
    QList<orvastore::KeptCheck> sales;
    QList<orvastore::KeptCheck> returns;
    QStringList asked; ///< in their order
    orvastore::Reservation reserved;
    std::function<void()> whileReserving;
    QList<std::chrono::milliseconds> allowed;
};

/// Hands the books out as if a module had been loaded, while it lives.
class FakeReturnModule : public poshost::StoreModule, public orvastore::StoreDriver
{
public:
    explicit FakeReturnModule(FakeReturnBooks& fake) : books(fake)
    {
        MockFactory<poshost::StoreModule>::mocked = this;
    }
    ~FakeReturnModule() override { MockFactory<poshost::StoreModule>::mocked = nullptr; }
    FakeReturnModule(const FakeReturnModule&) = delete;
    FakeReturnModule& operator=(const FakeReturnModule&) = delete;

    QSharedPointer<orvastore::StoreDriver> load(const QString&, poshost::Message&) override
    {
        return {this, [](orvastore::StoreDriver*) {}};
    }
    QSharedPointer<orvastore::StoreClient> makeClient() override { return {}; }
    QSharedPointer<orvastore::SharedBooks> makeBooks() override
    {
        return {&books, [](orvastore::SharedBooks*) {}};
    }

private:
    FakeReturnBooks& books;
};
