// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/storesetup.h"

#include "host/config/hostkeys_p.h"
#include "host/queue/storemodule_p.h"
#include "host/queue/storestate.h"
#include "host/services/config.h"

#include <QCoreApplication>
#include <QDir>
#include <algorithm>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 millisecondsASecond = 1000;

QString text(const Config& config, const QString& key)
{
    return config.getString(u"store:"_s + key, QString());
}

int number(const Config& config, const QString& key, int defaultValue)
{
    return std::max(1, config.getInt(u"store:"_s + key, defaultValue));
}

QString installedModule()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + u'/' +
                           QStringLiteral(ORVA_STORE_FROM_PROGRAM) + u"/liborvastore.so"_s);
}

/// The address of a store is shown to people, a password never.
bool namesPassword(const QString& database)
{
    const qsizetype at = database.indexOf(u'@');
    const qsizetype scheme = database.indexOf("://"_L1);
    const bool inAddress = scheme >= 0 && at > scheme &&
                           QStringView(database).mid(scheme + 3, at - scheme - 3).contains(u':');
    return inAddress || database.contains("password"_L1, Qt::CaseInsensitive);
}

Message problemOf(const StoreSetup& setup, const QString& fallback)
{
    if (namesPassword(setup.settings.database)) {
        return Message::of("store.passwordInside");
    }
    if (!fallback.isEmpty() && fallback != "deliver"_L1 && fallback != "wait"_L1) {
        return Message::of("store.fallback");
    }
    return {};
}

} // namespace

std::optional<StoreSetup> StoreSetup::configured()
{
    const Config* const config = Singleton<Config>::instance;
    const QString database = config == nullptr ? QString() : text(*config, u"database"_s);
    if (database.isEmpty()) {
        return std::nullopt;
    }
    StoreSetup setup;
    setup.settings.database = database;
    setup.settings.passwordFile = text(*config, u"passwordFile"_s);
    setup.settings.timeoutSeconds = number(*config, u"timeout"_s, defaultStoreSeconds);
    setup.settings.program = QCoreApplication::applicationName();
    setup.shop = text(*config, u"shop"_s);
    const QString module = text(*config, u"module"_s);
    setup.module = module.isEmpty() ? installedModule() : module;
    const QString fallback = text(*config, u"fallback"_s);
    if (fallback == "deliver"_L1) {
        setup.fallbackMilliseconds =
            number(*config, u"fallbackAfter"_s, defaultFallbackSeconds) * millisecondsASecond;
    }
    setup.problem = problemOf(setup, fallback);
    return setup;
}

QSharedPointer<orvastore::StoreDriver> StoreSetup::driver(Message& trouble) const
{
    if (!problem.isEmpty()) {
        trouble = problem;
        return {};
    }
    return MockFactory<StoreModule>::create()->load(module, trouble);
}

QSharedPointer<orvastore::StoreClient> StoreSetup::client(Message& trouble) const
{
    const QSharedPointer<orvastore::StoreDriver> loaded = driver(trouble);
    if (!loaded) {
        return {};
    }
    QSharedPointer<orvastore::StoreClient> made = loaded->makeClient();
    made->open(settings);
    return made;
}

QSharedPointer<orvastore::SharedBooks> StoreSetup::books(Message& trouble) const
{
    const QSharedPointer<orvastore::StoreDriver> loaded = driver(trouble);
    if (!loaded) {
        return {};
    }
    QSharedPointer<orvastore::SharedBooks> made = loaded->makeBooks();
    made->open(settings);
    return made;
}

Message storestate::problem()
{
    const std::optional<StoreSetup> setup = StoreSetup::configured();
    Message trouble;
    if (setup) {
        static_cast<void>(setup->driver(trouble));
    }
    return trouble;
}

bool storestate::isConfigured()
{
    return StoreSetup::configured().has_value();
}

} // namespace poshost
