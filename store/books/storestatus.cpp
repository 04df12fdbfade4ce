// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/books/storestatus.h"

#include "store/database/connection.h"

namespace orvastore {

namespace {

void readFigures(Connection& connection, StoreStatus& status)
{
    const Result found =
        connection.run("SELECT lanes, messages, is_estimated, oldest_seconds, parked, "
                       "behind_parked, held_queues, paused_accounts, attempts, deliveries "
                       "FROM orva.figures($1::int)",
                       {Value::number(StoreStatus::recentSeconds)});
    int column = 0;
    status.lanes = found.number(0, column++);
    status.messages = found.number(0, column++);
    status.isEstimated = found.isTrue(0, column++);
    status.oldestSeconds = found.number(0, column++);
    status.parked = found.number(0, column++);
    status.behindParked = found.number(0, column++);
    status.heldQueues = found.number(0, column++);
    status.pausedAccounts = found.number(0, column++);
    status.recentAttempts = found.number(0, column++);
    status.recentDeliveries = found.number(0, column++);
}

void readFailures(Connection& connection, StoreStatus& status)
{
    const Result found = connection.run(
        "SELECT meaning, failed FROM orva.failures($1::int) ORDER BY failed DESC, meaning",
        {Value::number(StoreStatus::recentSeconds)});
    for (int row = 0; row < found.rows(); ++row) {
        status.recentFailures.append({found.text(row, 0), found.number(row, 1)});
    }
}

void readTills(Connection& connection, StoreStatus& status)
{
    const Result found =
        connection.run("SELECT shop, till, (extract(epoch FROM at) * 1000)::bigint, "
                       "silent_seconds FROM orva.tills_heard_of($1::int) ORDER BY at, shop, till",
                       {Value::number(StoreStatus::daysUntilGone)});
    for (int row = 0; row < found.rows(); ++row) {
        status.tills.append(
            {found.text(row, 0), found.text(row, 1), found.time(row, 2), found.number(row, 3)});
    }
}

} // namespace

StoreStatus StoreStatus::of(Connection& connection)
{
    StoreStatus status;
    readFigures(connection, status);
    readFailures(connection, status);
    readTills(connection, status);
    return status;
}

} // namespace orvastore
