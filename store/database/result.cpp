// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/database/result.h"

#include <libpq-fe.h>

namespace orvastore {

void Result::Clearing::operator()(pg_result* result) const
{
    PQclear(result);
}

Result::Result(pg_result* owned) : held(owned) {}

int Result::rows() const
{
    return PQntuples(held.get());
}

bool Result::isNull(int row, int column) const
{
    return PQgetisnull(held.get(), row, column) == 1;
}

QString Result::text(int row, int column) const
{
    return QString::fromUtf8(PQgetvalue(held.get(), row, column),
                             PQgetlength(held.get(), row, column));
}

qint64 Result::number(int row, int column) const
{
    return QByteArray(PQgetvalue(held.get(), row, column)).toLongLong();
}

bool Result::isTrue(int row, int column) const
{
    return *PQgetvalue(held.get(), row, column) == 't';
}

QByteArray Result::bytes(int row, int column) const
{
    constexpr qsizetype prefix = 2; // \x
    return QByteArray::fromHex(QByteArray(PQgetvalue(held.get(), row, column)).mid(prefix));
}

QDateTime Result::time(int row, int column) const
{
    return isNull(row, column) ? QDateTime() : QDateTime::fromMSecsSinceEpoch(number(row, column));
}

} // namespace orvastore
