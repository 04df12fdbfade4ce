// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/workplace.h"

#include "host/config/keysheet.h"
#include "host/database/database.h"
#include "host/queue/deliverythread.h"
#include "host/queue/queuebell.h"
#include "host/queue/storestate.h"
#include "host/services/sessioncontext.h"
#include "till/desk/installedplugin.h"
#include "till/desk/pluginhost.h"
#include "till/desk/precheckdurations.h"
#include "till/failure.h"
#include "till/keys.h"
#include "till/recording/recordfolder.h"
#include "till/recording/recording.h"
#include "till/sharing/sharedreturns.h"
#include "till/sharing/suspendedsharing.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {

QString databaseFile(const Options& options, const Config& config)
{
    const QString file = options.database.isEmpty()
                             ? config.getString(u"till:database"_s, QString())
                             : options.database;
    if (file.isEmpty()) {
        throw Failure(Text::tr("%1 names no database; write database in [till] or use --database.")
                          .arg(options.configFile),
                      ExitCode::Usage);
    }
    return file;
}

Config loadConfig(const Options& options)
{
    const bool isThere = options.configNamed || options.configFound;
    Config config;
    if (isThere) {
        // whose keys the rest is written in shows the file itself
        static_cast<void>(config.examine(options.configFile));
    }
    poshost::keysheet::registerPlugin(chosenPlugin(options.plugin, config));
    if (isThere) {
        config.load(options.configFile);
    }
    return config;
}

QString pluginFile(const Options& options, const Config& config)
{
    const QString file = chosenPlugin(options.plugin, config);
    if (file.isEmpty()) {
        throw Failure(Text::tr("%1 names no plug-in; write plugin in [till] or use --plugin.")
                          .arg(options.configFile),
                      ExitCode::Usage);
    }
    return file;
}

Workplace::Workplace(const Options& given)
    : options(given), config(loadConfig(given)),
      opened(QSharedPointer<poshost::Database>::create(databaseFile(given, config))),
      broker(opened), store(opened)
{
    session.setSessionContext(QSharedPointer<SessionContext>::create(
        config.getString(u"till:name"_s, QString::fromUtf16(defaultTillName))));
    store.setReturnTerms(
        {config.getInt(u"till:returnDays"_s, defaultReturnDays), given.fromArchive});
    Singleton<Config>::instance = &config;
    Singleton<Session>::instance = &session;
    Singleton<DBQueueBroker>::instance = &broker;
    shared = SharedStore::configured();
    if (shared) {
        store.noteSilent(true);
        sharing = std::make_unique<SuspendedSharing>(*shared, *opened, store);
    }
}

QStringList Workplace::settleSuspended()
{
    QStringList notices;
    if (sharing) {
        sharing->settle(notices);
    }
    return notices;
}

Workplace::~Workplace()
{
    delivery.reset();
    desk.reset();
    plugin.reset();
    recording.reset();
    Singleton<DBQueueBroker>::instance = nullptr;
    Singleton<Session>::instance = nullptr;
    Singleton<Config>::instance = nullptr;
}

QStringList Workplace::warnings() const
{
    QStringList texts = noticesOf(config);
    const poshost::Message trouble = poshost::storestate::problem();
    if (!trouble.isEmpty()) {
        texts.append(said(trouble)); // the queue grows meanwhile, and nobody else would say so
    }
    return texts;
}

int Workplace::keepChecksDays() const
{
    return config.getInt(u"till:keepChecksDays"_s, defaultKeepChecksDays);
}

QString Workplace::metricsFile() const
{
    return config.getString(u"till:metricsFile"_s, QString());
}

void Workplace::loadPlugin()
{
    const QString file = pluginFile(options, config);
    records = RecordFolder::configured(config);
    if (records != nullptr) {
        recording = std::make_unique<Recording>(
            *records, file, session.getSessionContext()->getContextValue().toString());
    }
    plugin = std::make_unique<PluginHost>(file);
    desk = std::make_unique<CashDesk>(
        recording != nullptr ? recording->before(plugin->loyaltySystem()) : plugin->loyaltySystem(),
        store, session);
    if (sharing) {
        desk->share(sharing.get());
        // a time of its own: what a return has waited for the store takes nothing from the others
        returnsStore = SharedStore::configured();
        returns = std::make_unique<SharedReturns>(store, *opened, *returnsStore);
        desk->share(*returns);
    }
    desk->onRequest([durations = PrecheckDurations(opened->fileName())](
                        std::chrono::microseconds time) { durations.add(time); });
}

BasicLoyaltySystem& Workplace::loyaltySystem()
{
    return plugin->loyaltySystem();
}

void Workplace::startDelivery()
{
    delivery = std::make_unique<poshost::DeliveryThread>(opened->fileName());
    delivery->start();
}

void Workplace::notifyDelivery()
{
    if (delivery) {
        delivery->notify();
    }
    poshost::QueueBell::ring(opened->fileName());
}

} // namespace till
