// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/postgresbooks.h"

namespace orvastore {

StoreResult PostgresBooks::forEachCheck(const QString&, const QString&,
                                        const std::function<bool(const KeptCheck&)>&)
{
    return {};
}
StoreResult PostgresBooks::findChecks(const QString&, const QString&, QList<KeptCheck>&)
{
    return {};
}
StoreResult PostgresBooks::rewrite(const QString&, const QString&, const QByteArray&)
{
    return {};
}

} // namespace orvastore
