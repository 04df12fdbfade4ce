// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/queueundertest.h"
#include "host/database/database.h"
#include "tests/support/testfolder.h"

namespace tests {

/// The queue in the till's database.
class OurQueue : public contract::QueueUnderTest
{
public:
    DBQueueBroker& broker() override { return ownBroker; }
    QList<contract::StoredMessage> stored() override;
    void inTransaction(const std::function<void()>& work) override;
    void inAbandonedTransaction(const std::function<void()>& work) override;
    void breakStorage() override;

protected:
    QSharedPointer<poshost::Database> opened() const { return database; }

private:
    TestFolder folder;
    const QString file = folder.file(QStringLiteral("till.db"));
    const QSharedPointer<poshost::Database> database =
        QSharedPointer<poshost::Database>::create(file);
    DBQueueBroker ownBroker{database};
    int copies = 0;
};

} // namespace tests
