// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/database/connection.h"
#include "store/sharedbooks.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>

namespace orvastore {

/// What the tills of a shop share, on PostgreSQL. What it promises stands in sharedbooks.h.
class PostgresBooks : public SharedBooks
{
public:
    void open(const StoreSettings& settings) override;
    void interrupt() override;
    void setEnd(const QDeadlineTimer& time) override { end = time; }
    void allow(std::chrono::milliseconds altogether) override;

    SaleToReturn saleToReturn(const QString& shop, const QString& which) override;
    StoreResult reserve(const Reservation& reservation) override;
    StoreResult release(const QString& shop, const QString& identifier) override;
    StoreResult settleReturn(const QString& shop, const QString& identifier) override;
    StoreResult keep(const HandedCheck& check) override;

    StoreResult leave(const LeftCheck& check) override;
    TakeUp takeUp(const QString& shop, const QString& which, const QString& till,
                  const QString& token) override;
    StoreResult settleTakeUp(const QString& shop, const QString& token) override;
    StoreResult forEachLeft(const QString& shop,
                            const std::function<void(const LeftCheck&)>& take) override;

    StoreResult forEachCheck(const QString& shop, const QString& before,
                             const std::function<bool(const KeptCheck&)>& take) override;
    StoreResult findChecks(const QString& shop, const QString& which,
                           QList<KeptCheck>& found) override;
    StoreResult rewrite(const QString& shop, const QString& identifier,
                        const QByteArray& content) override;

private:
    /// Connects to a store that this program can work with and asks it something. What is thrown
    /// becomes the result.
    StoreResult asking(const std::function<void(Connection&)>& ask);

    std::mutex mutex; ///< guards the pointer, which interrupt uses
    std::unique_ptr<Connection> connection;
    bool interrupted = false;
    QDeadlineTimer end{QDeadlineTimer::Forever};
    int examined = 0; ///< the session whose schema was looked at
    std::chrono::milliseconds timeout{1000};
    std::optional<std::chrono::milliseconds> allowed; ///< what is left; nothing: no limit
    poshost::Message trouble;                         ///< why the last thing did not succeed
};

} // namespace orvastore
