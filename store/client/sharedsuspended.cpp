// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/postgresbooks.h"

namespace orvastore {

StoreResult PostgresBooks::leave(const LeftCheck&)
{
    return {};
}
TakeUp PostgresBooks::takeUp(const QString&, const QString&, const QString&, const QString&)
{
    return {};
}
StoreResult PostgresBooks::settleTakeUp(const QString&, const QString&)
{
    return {};
}
StoreResult PostgresBooks::forEachLeft(const QString&, const std::function<void(const LeftCheck&)>&)
{
    return {};
}

} // namespace orvastore
