// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/closedchecks.h"

#include "host/database/statement.h"
#include "host/services/config.h"
#include "till/checks/checkcodec.h"
#include "till/failure.h"

using namespace Qt::StringLiterals;

namespace till {

namespace {

/// What a damaged check says of its lines nobody knows; the store keeps it as it is.
QList<orvastore::ReturnedLine> returnedLines(const poshost::ClosedCheck& closed)
{
    if (closed.saleIdentifier.isEmpty()) {
        return {};
    }
    try {
        return returnedLinesOf(checkcodec::decode(closed.content, closed.identifier));
    } catch (const Failure&) {
        return {};
    }
}

const QString select = u"SELECT id, number, updated_at, coalesce(sale_id, ''), data FROM checks "
                       "WHERE state = 'closed' AND "_s;

std::optional<poshost::ClosedCheck> readOne(poshost::Statement& row)
{
    if (!row.next()) {
        return std::nullopt;
    }
    poshost::ClosedCheck check;
    check.identifier = row.value(0).toString();
    check.number = row.value(1).toLongLong();
    check.closedAt = QDateTime::fromMSecsSinceEpoch(row.value(2).toLongLong());
    check.saleIdentifier = row.value(3).toString();
    check.content = row.value(4).toByteArray();
    check.returned = returnedLines(check);
    const Config* const config = Singleton<Config>::instance;
    check.till = config == nullptr ? QString() : config->getString(u"till:name"_s, QString());
    return check;
}

} // namespace

QList<orvastore::ReturnedLine> returnedLinesOf(const Check& check)
{
    QList<orvastore::ReturnedLine> lines;
    for (const Line& line : check.lines) {
        lines.append({line.position, line.returnedThousandths, line.thousandths});
    }
    return lines;
}

std::optional<poshost::ClosedCheck> readClosedCheck(poshost::Database& database, qint64 messageId)
{
    poshost::Statement row(database, select + u"message_id = ?"_s);
    return readOne(row.bind(messageId));
}

std::optional<poshost::ClosedCheck> readClosedCheck(poshost::Database& database,
                                                    const QString& checkId)
{
    poshost::Statement row(database, select + u"id = ?"_s);
    return readOne(row.bind(checkId));
}

} // namespace till
