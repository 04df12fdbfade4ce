// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/books/handingover.h"
#include "store/books/returnsbook.h"
#include "store/client/postgresbooks.h"

namespace orvastore {

SaleToReturn PostgresBooks::saleToReturn(const QString& shop, const QString& which)
{
    SaleToReturn found;
    const StoreResult result =
        asking([&](Connection& session) { found = returnsbook::find(session, shop, which); });
    found.result = result;
    return found;
}

StoreResult PostgresBooks::reserve(const Reservation& reservation)
{
    return asking([&](Connection& session) { returnsbook::reserve(session, reservation); });
}

StoreResult PostgresBooks::release(const QString& shop, const QString& identifier)
{
    return asking([&](Connection& session) { returnsbook::release(session, shop, identifier); });
}

StoreResult PostgresBooks::settleReturn(const QString& shop, const QString& identifier)
{
    return asking([&](Connection& session) { returnsbook::close(session, shop, identifier); });
}

StoreResult PostgresBooks::keep(const HandedCheck& check)
{
    return asking([&](Connection& session) { handOver(session, check); });
}

} // namespace orvastore
