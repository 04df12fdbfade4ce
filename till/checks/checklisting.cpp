// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The list of the store's checks, the newest first.

#include "host/database/database.h"
#include "host/database/statement.h"
#include "till/checks/archivedchecks.h"
#include "till/checks/checkstore.h"
#include "till/failure.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

bool isReturn(int type)
{
    return type == static_cast<int>(EDocumentType::ReturnBySale);
}

} // namespace

QList<CheckRow> CheckStore::list(int most, const QString& before)
{
    QList<CheckRow> rows;
    forEachListed(
        [&](const CheckRow& row) {
            rows.append(row);
            return rows.size() < most;
        },
        before);
    return rows;
}

void CheckStore::forEachListed(const std::function<bool(const CheckRow&)>& take,
                               const QString& before)
{
    const auto change =
        before.isEmpty() ? std::optional(std::numeric_limits<qint64>::max()) : changeOf(before);
    if (!change) {
        listArchived(take, before);
    } else if (listHere(take, *change)) {
        listArchived(take, {});
    }
}

/// @return false: it wants no more
bool CheckStore::listHere(const std::function<bool(const CheckRow&)>& take, qint64 beforeChange)
{
    // numbers of changes are distinct: each one is taken while nobody else writes
    poshost::Statement statement(*database,
                                 u"SELECT id, number, CASE WHEN state = 'abandoned' AND EXISTS "
                                 "(SELECT 1 FROM leavings WHERE check_id = id) THEN 'left' "
                                 "ELSE state END, type, updated_at FROM checks "
                                 "WHERE change_number < ? ORDER BY change_number DESC"_s);
    statement.bind(beforeChange);
    bool wantsMore = true;
    while (wantsMore && statement.next()) {
        wantsMore = take({statement.value(0).toString(), statement.value(1).toInt(),
                          statement.value(2).toString(), isReturn(statement.value(3).toInt()),
                          QDateTime::fromMSecsSinceEpoch(statement.value(4).toLongLong())});
    }
    return wantsMore;
}

void CheckStore::listArchived(const std::function<bool(const CheckRow&)>& take,
                              const QString& before)
{
    bool isBehind = before.isEmpty();
    ArchivedChecks(*database).forEachListed([&](const ArchivedCheck& kept) {
        if (isBehind) {
            return take({kept.id, int(kept.number), kept.state, isReturn(kept.type),
                         QDateTime::fromMSecsSinceEpoch(kept.updatedAt)});
        }
        isBehind = kept.id == before;
        return true;
    });
    if (!isBehind) {
        throw Failure(Text::tr("There is no check \"%1\"; look at the list of checks.").arg(before),
                      ExitCode::Usage);
    }
}

/// Which change was the last one of a check of the database.
std::optional<qint64> CheckStore::changeOf(const QString& id)
{
    poshost::Statement statement(*database, u"SELECT change_number FROM checks WHERE id = ?"_s);
    return statement.bind(id).next() ? std::optional(statement.value(0).toLongLong())
                                     : std::nullopt;
}

} // namespace till
