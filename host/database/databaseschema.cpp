// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/databaseschema_p.h"

#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/databaseerror_p.h"
#include "host/database/schemaregistry_p.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"

#include <QList>
#include <QStringList>
#include <algorithm>

namespace poshost {

using namespace Qt::StringLiterals;

namespace databaseschema {

namespace {

/// Whether an owner's tables and indices are those of a file of that version: its last mark up to
/// there is in the file, and none of the later ones.
bool fits(const OwnedSteps& owned, int version, const QStringList& names)
{
    QString due;
    for (const SchemaStep& step : owned.steps) {
        if (step.version > version && names.contains(step.mark)) {
            return false;
        }
        if (step.version <= version && !step.mark.isEmpty()) {
            due = step.mark;
        }
    }
    return due.isEmpty() || names.contains(due);
}

bool fits(int version, const QStringList& names)
{
    if (version <= 0) {
        return version == 0 && names.isEmpty();
    }
    const QList<OwnedSteps> owners = registeredSchema();
    return std::all_of(owners.cbegin(), owners.cend(),
                       [&](const OwnedSteps& owned) { return fits(owned, version, names); });
}

/// What all owners do to a file of the version before.
QStringList statementsTo(int version)
{
    QStringList statements;
    for (const OwnedSteps& owned : registeredSchema()) {
        for (const SchemaStep& step : owned.steps) {
            if (step.version == version) {
                statements.append(step.statements);
            }
        }
    }
    return statements;
}

} // namespace

int newestVersion()
{
    int newest = 0;
    for (const OwnedSteps& owned : registeredSchema()) {
        for (const SchemaStep& step : owned.steps) {
            newest = std::max(newest, step.version);
        }
    }
    return newest;
}

int checkedVersion(Database& database)
{
    // both in one look: another process may be bringing the file up to date
    Statement statement(database, u"SELECT user_version, (SELECT coalesce(group_concat(name), '') "
                                  "FROM sqlite_schema) FROM pragma_user_version"_s);
    statement.next();
    const int version = statement.value(0).toInt();
    if (const int newest = newestVersion(); version > newest) {
        throw BasicException(databaseerror::tooNew(database.fileName(), version, newest));
    }
    if (!fits(version, statement.value(1).toString().split(u',', Qt::SkipEmptyParts))) {
        throw BasicException(databaseerror::wrongVersion(database.fileName(), version));
    }
    return version;
}

void bringUpToDate(Database& database)
{
    if (checkedVersion(database) == newestVersion()) {
        return;
    }
    Transaction transaction(database);
    // another process may have been quicker
    for (int version = checkedVersion(database); version < newestVersion(); ++version) {
        for (const QString& sql : statementsTo(version + 1)) {
            database.execute(sql);
        }
    }
    database.execute(u"PRAGMA user_version = %1"_s.arg(newestVersion()));
    transaction.commit();
}

} // namespace databaseschema

} // namespace poshost
