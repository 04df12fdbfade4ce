// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/database/connection.h"
#include "store/storeclient.h"

#include <QDeadlineTimer>
#include <memory>
#include <mutex>

namespace orvastore {

/// A till's way to the store, on PostgreSQL. What it promises stands in storeclient.h.
class PostgresStore : public StoreClient
{
public:
    void open(const StoreSettings& settings) override;
    StoreResult reach() override;
    QList<StoreResult> handOver(const QList<HandedCheck>& checks) override;
    void interrupt() override;

private:
    void requireUsableSchema();
    void noteTill(const HandedCheck& check);

    std::mutex mutex; ///< guards the pointer, which interrupt uses
    std::unique_ptr<Connection> connection;
    bool interrupted = false;
    int examined = 0;        ///< the session whose schema was looked at
    QDeadlineTimer nextNote; ///< when it is told anew that this till hands over
};

} // namespace orvastore
