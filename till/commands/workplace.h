// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/config.h"
#include "host/services/dbqueuebroker.h"
#include "host/services/session.h"
#include "till/checks/checkstore.h"
#include "till/desk/cashdesk.h"
#include "till/options.h"
#include "till/reason.h"

#include <QSharedPointer>
#include <QString>

#include <memory>

namespace poshost {
class Database;
class DeliveryThread;
} // namespace poshost

namespace till {

class PluginHost;
class RecordFolder;
class SharedReturns;
class SharedStore;
class Recording;
class SharedStore;
class SuspendedSharing;

/// The configuration that the command line names or that was found; an empty one where there is
/// none. What is known of the plug-in's keys is registered on the way.
/// @throws BasicException "configError"
Config loadConfig(const Options& options);
/// @throws Failure (Usage) when neither names a plug-in
QString pluginFile(const Options& options, const Config& config);

/// The database's file, as the command line or else the configuration says.
/// @throws Failure (Usage) when neither names one
QString databaseFile(const Options& options, const Config& config);

/// Everything around a cashier: configuration, database, session, queue, plug-in and delivery. Puts
/// the host's services in place for the plug-in and takes them out again.
class Workplace
{
public:
    /// Reads the configuration and opens the database; loads no plug-in yet.
    /// @throws Failure or BasicException with what is wrong
    explicit Workplace(const Options& options);
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    poshost::Database& database() { return *opened; }
    CheckStore& checks() { return store; }
    /// How long a closed check stays in the database, as configured.
    int keepChecksDays() const;
    /// Where the service writes the till's metrics; empty: nowhere.
    QString metricsFile() const;
    /// Sentences about the configuration that the cashier should see.
    QStringList warnings() const;

    /// Loads the plug-in. @throws Failure
    void loadPlugin();
    /// After loadPlugin only.
    BasicLoyaltySystem& loyaltySystem();
    CashDesk& cashDesk() { return *desk; }
    /// The books that the shop's tills share; null when no store is configured.
    SharedStore* sharedStore() { return shared.get(); }
    /// Asks the store about suspended checks of which it has not said where they are. Blocks up to
    /// its time-out where there are any.
    /// @return sentences about them
    QStringList settleSuspended();

    /// Delivers the queue from now on, on a thread of its own.
    void startDelivery();
    /// Says that there may be something to deliver, a check has been closed for instance (after the
    /// commit): to the delivery here, if there is one, and to a process that watches the queue.
    void notifyDelivery();

private:
    Options options;
    Config config;
    Session session;
    QSharedPointer<poshost::Database> opened;
    DBQueueBroker broker;
    CheckStore store;
    std::unique_ptr<RecordFolder> records;
    std::unique_ptr<Recording> recording;
    std::unique_ptr<SharedStore> shared;
    std::unique_ptr<SuspendedSharing> sharing;
    std::unique_ptr<PluginHost> plugin;
    std::unique_ptr<SharedStore> returnsStore;
    std::unique_ptr<SharedReturns> returns;
    std::unique_ptr<CashDesk> desk;
    std::unique_ptr<poshost::DeliveryThread> delivery;
};

} // namespace till
