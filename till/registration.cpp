// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Tells the host library what the till owns: its tables and its configuration keys. Every program
// that links the till's core gets this file as an object of its own (till/CMakeLists.txt), so that
// none can open a till's file without its tables.

#include "host/config/knownkeys.h"
#include "host/queue/storeerrands.h"
#include "till/checks/checkschema.h"
#include "till/checks/closedchecks.h"
#include "till/keys.h"
#include "till/sharing/reservations.h"
#include "till/sharing/silentchecks.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

std::optional<qint64> nextErrand(poshost::Database& database)
{
    const std::optional<qint64> goods = Reservations::nextDue(database);
    const std::optional<qint64> checks = silentchecks::nextDue(database);
    return goods && checks ? std::min(goods, checks) : goods ? goods : checks;
}

/// Goods that others may sell or take back come first.
orvastore::StoreResult runErrands(poshost::Database& database, orvastore::SharedBooks& books,
                                  const QString& shop)
{
    const orvastore::StoreResult goods = Reservations::releaseDue(database, books, shop);
    return goods.end == orvastore::StoreEnd::Done ? silentchecks::handOver(database, books, shop)
                                                  : goods;
}

bool registerAll()
{
    poshost::registerSchema(u"checks"_s, checkSchema());
    poshost::registerClosedChecks(readClosedCheck);
    poshost::registerStoreErrands({&nextErrand, &runErrands});
    poshost::knownkeys::registerKeys(u"till"_s, tillKeys());
    return true;
}

[[maybe_unused]] const bool isRegistered = registerAll();

} // namespace
} // namespace till
