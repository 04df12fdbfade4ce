// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/postgresbooks.h"

namespace orvastore {

SaleToReturn PostgresBooks::saleToReturn(const QString&, const QString&)
{
    return {};
}
StoreResult PostgresBooks::reserve(const Reservation&)
{
    return {};
}
StoreResult PostgresBooks::release(const QString&, const QString&)
{
    return {};
}

} // namespace orvastore
