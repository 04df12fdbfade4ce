// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/database.h"
#include "host/queue/outgoingqueue.h"
#include "host/services/dbqueuebroker.h"
#include "host/services/session.h"
#include "tests/support/mocked.h"
#include "tests/support/testfolder.h"
#include "tests/unit/till/fakeloyalty.h"
#include "tests/unit/till/printing.h"
#include "till/checks/checkstore.h"
#include "till/desk/cashdesk.h"
#include "till/failure.h"

#include <memory>

#include <gtest/gtest.h>

namespace tests {

/// The refusal of an operation as a text; a test failure when nothing is refused.
template <typename Operation>
QString refusalOf(Operation operation)
{
    try {
        operation();
    } catch (const till::Failure& failure) {
        return failure.text();
    }
    ADD_FAILURE() << "nothing was refused";
    return {};
}

/// A cash desk with a loyalty system that does what the test says, on a real database.
class TillTest : public ::testing::Test
{
protected:
    TillTest();
    ~TillTest() override;

    /// Two lines: 2 pieces at 100.00 and 0.500 kg at 60.00, so G = 230.00.
    static till::CheckFile twoLines();
    /// Opens twoLines, presents the card and requests.
    void openReady();
    /// Sells twoLines with so many points; everything granted as the test says.
    till::Check sell(const till::PointsChoice& points = {});
    /// A return of the sale's lines, position -> thousandths.
    static till::CheckFile returnOf(const QString& sale, const QMap<int, qint64>& lines);

    /// The payloads of the undelivered messages, oldest first.
    QStringList payloads();
    int messages() { return int(poshost::OutgoingQueue(*database).list(true).size()); }
    /// The desk and the plug-in anew on the same database, as after a restart.
    void restart();

    TestFolder folder;
    QSharedPointer<poshost::Database> database;
    DBQueueBroker broker;
    InSingleton<DBQueueBroker> brokerInPlace;
    Session session;
    InSingleton<Session> sessionInPlace;
    till::CheckStore store;
    std::unique_ptr<FakeLoyalty> loyalty;
    std::unique_ptr<till::CashDesk> desk;
};

} // namespace tests
