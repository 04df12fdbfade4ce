// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/closedchecks.h"

#include "host/database/statement.h"
#include "host/services/config.h"

using namespace Qt::StringLiterals;

namespace till {

std::optional<poshost::ClosedCheck> readClosedCheck(poshost::Database& database, qint64 messageId)
{
    poshost::Statement row(database, u"SELECT id, number, updated_at, coalesce(sale_id, ''), data "
                                     "FROM checks WHERE message_id = ? AND state = 'closed'"_s);
    if (!row.bind(messageId).next()) {
        return std::nullopt;
    }
    poshost::ClosedCheck check;
    check.identifier = row.value(0).toString();
    check.number = row.value(1).toLongLong();
    check.closedAt = QDateTime::fromMSecsSinceEpoch(row.value(2).toLongLong());
    check.saleIdentifier = row.value(3).toString();
    check.content = row.value(4).toByteArray();
    const Config* const config = Singleton<Config>::instance;
    check.till = config == nullptr ? QString() : config->getString(u"till:name"_s, QString());
    return check;
}

} // namespace till
