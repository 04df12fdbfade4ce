// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/olderdatabase.h"

#include "host/database/database.h"
#include "host/database/transaction.h"

#include <QStringList>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tests {

void makeOlder(poshost::Database& database)
{
    constexpr int older = 5;
    if (poshost::Database::schemaVersion() != older + 5) {
        throw std::logic_error(
            "makeOlder knows what versions 6 to 10 have brought, and there is a newer");
    }
    const QStringList statements{u"DROP INDEX queue_handing"_s,
                                 u"ALTER TABLE queue_messages DROP COLUMN handover"_s,
                                 u"ALTER TABLE queue_messages DROP COLUMN handed_again_at"_s,
                                 u"DROP INDEX checks_number"_s,
                                 u"DROP TABLE archives"_s,
                                 u"DROP TABLE leavings"_s,
                                 u"DROP TABLE takeups"_s,
                                 u"DROP TABLE return_reservations"_s,
                                 u"DROP TABLE silent_checks"_s,
                                 u"PRAGMA user_version = %1"_s.arg(older)};
    poshost::Transaction transaction(database);
    for (const QString& statement : statements) {
        database.execute(statement);
    }
    transaction.commit();
}

} // namespace tests
