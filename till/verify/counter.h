// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/dbqueuebroker.h"
#include "host/services/session.h"
#include "till/checks/check.h"
#include "till/checks/checkstore.h"
#include "till/verify/listeningtransport.h"

#include <QHash>
#include <QTemporaryDir>

#include <memory>

class Config;

namespace poshost {
class Database;
} // namespace poshost

namespace till {
class CashDesk;
class PluginHost;
} // namespace till

namespace till::verify {

/// What is sold: whose card, which lines, and how many points are spent.
struct Basket
{
    QString card;
    QList<Line> lines;
    PointsChoice points = {};
};

/// What a till has in hand when a check is closed and nothing of it is sent but the pre-check.
struct Papers
{
    Check check;
    Exchange precheck;       ///< the last one; its reply has no status where none was sent
    QByteArray confirmation; ///< as the plug-in queued it; empty: it did not
    QString refusal;         ///< why the loyalty system does not take part, for the cashier

    bool isConfirmed() const { return !confirmation.isEmpty(); }
};

/// How the plug-in talks to its server: where, and with which headers.
struct Ways
{
    QUrl precheck;
    QUrl paymentTry;
    QUrl confirm;
    Outgoing::Headers headers;
};

/// A cash desk for trying a server: the host and the real plug-in on books of its own, which are
/// gone with it. What it closes stays in its queue until deliver() is called. One at a time, on the
/// host thread; each operation blocks as a cashier's does.
class Counter
{
public:
    /// @throws Failure, BasicException where the plug-in cannot be used
    Counter(Config& configuration, const QString& pluginFile, const QUrl& marked);
    ~Counter();
    Counter(const Counter&) = delete;
    Counter& operator=(const Counter&) = delete;

    const Ways& ways() const { return known; }

    /// Sells and closes. @throws Failure
    Papers sell(const Basket& basket);
    /// Returns thousandths of lines by their positions, and closes. The sale must have been
    /// delivered or settled. @throws Failure where the till itself does not take it back
    Papers takeBack(const QString& saleId, const QHash<int, qint64>& thousandths);
    /// Has the host's queue deliver the check. @return whether the server took it
    bool deliver(const Papers& papers);
    /// The server has the check's confirmation by other ways.
    void settle(const Papers& papers);

    /// What was heard on the wire since the last call.
    QList<Exchange> takeExchanges() { return std::exchange(heard, {}); }

private:
    class KeepingBroker;

    void learnWays();
    Papers closeCheck();
    void listen();

    QTemporaryDir folder;
    Session session;
    QSharedPointer<poshost::Database> database;
    CheckStore store;
    std::unique_ptr<KeepingBroker> broker;
    ListeningTransport transport;
    std::unique_ptr<PluginHost> plugin;
    std::unique_ptr<CashDesk> desk;
    QList<Exchange> heard;
    Ways known;
};

} // namespace till::verify
