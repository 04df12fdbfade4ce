// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/commands/program.h"

#include "console/exitcode.h"
#include "console/language.h"
#include "host/core/basicexception.h"
#include "host/services/config.h"
#include "store/commands/doctor.h"
#include "store/commands/metricscommand.h"
#include "store/commands/queuecommands.h"
#include "store/commands/returnscommands.h"
#include "store/commands/spoken.h"
#include "store/commands/statuscommand.h"
#include "store/commands/suspendedcommands.h"
#include "store/database/connection.h"
#include "store/schema/storeschema.h"
#include "store/text.h"
#include "store/worker/worker.h"

#include <QFileInfo>
#include <QSysInfo>

#include <csignal>

using namespace Qt::StringLiterals;

namespace orvastore {

namespace exitcode = console::exitcode;
using Command = Options::Command;

namespace {

constexpr int migrationSeconds = 600;

Worker* atWork = nullptr;

void askToStop(int /*signal*/)
{
    if (atWork != nullptr) {
        atWork->stop();
    }
}

QString settingsFile(const QString& given)
{
    const QString local = u"orva.toml"_s;
    if (!given.isEmpty()) {
        return given;
    }
    return QFileInfo::exists(local) ? local : u"/etc/orva/orva.toml"_s;
}

QString onlyLineOf(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Failure(Text::tr("%1 cannot be read: %2").arg(fileName, file.errorString()));
    }
    return QString::fromUtf8(file.readLine()).trimmed();
}

} // namespace

void Program::complain(const poshost::Message& what)
{
    errors.line(u"orva-store: "_s + spoken::said(what));
}

int Program::run()
{
    try {
        return obey();
    } catch (const StoreError& error) {
        complain(error.message());
    } catch (const BasicException& error) {
        complain(error.tr().message());
        return exitcode::usage;
    } catch (const std::exception& error) {
        errors.line(u"orva-store: "_s + QString::fromUtf8(error.what()));
    }
    return exitcode::failed;
}

int Program::obey()
{
    static Config config; // as long as anything may ask for it
    config.load(settingsFile(options.config));
    Singleton<Config>::instance = &config;
    switch (options.command) {
    case Command::Work:
        return work();
    case Command::Migrate:
        return migrate();
    case Command::Admit:
        return admit();
    case Command::Doctor:
        return doctor();
    case Command::Status:
        return StatusCommand(settings(), options, out, errors).run();
    case Command::Metrics:
        return MetricsCommand(settings(), options, out).run();
    case Command::SuspendedList:
    case Command::SuspendedRelease:
        return SuspendedCommands(settings(), options, out).run();
    case Command::ReturnsList:
    case Command::ReturnsRelease:
        return ReturnsCommands(settings(), options, out).run();
    default:
        return QueueCommands(settings(), options, out).run();
    }
}

StoreSettings Program::settings() const
{
    const Config& config = *Singleton<Config>::instance;
    const QString database = config.getString(u"store:database"_s, {});
    if (database.isEmpty()) {
        throw Failure(Text::tr("%1 names no store: add database = \"host=... dbname=... user=...\" "
                               "to its table [store]")
                          .arg(config.fileName()));
    }
    return {database, config.getString(u"store:passwordFile"_s, {}),
            std::max(config.getInt(u"store:timeout"_s, 5), 1), u"orva-store"_s};
}

int Program::work()
{
    Worker::Manner manner;
    manner.name =
        options.worker.isEmpty()
            ? u"%1:%2"_s.arg(QSysInfo::machineHostName()).arg(QCoreApplication::applicationPid())
            : options.worker;
    manner.laneTimeout = std::chrono::seconds(options.laneTimeout);
    manner.requestSeconds = options.requestTimeout;
    manner.untilEmpty = options.untilEmpty;
    manner.keepDays = Singleton<Config>::instance->getInt(u"queue:keepDeliveredDays"_s, 30);
    if (!options.authorizationFile.isEmpty()) {
        manner.authorization = onlyLineOf(options.authorizationFile);
    }
    Worker worker(settings(), manner, [this](const poshost::Message& what) { complain(what); });
    atWork = &worker;
    std::signal(SIGTERM, &askToStop);
    std::signal(SIGINT, &askToStop);
    out.line(Text::tr("Working as %1 until stopped.").arg(manner.name));
    worker.run();
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    atWork = nullptr;
    out.line(Text::tr("Delivered: %1, parked: %2, requests: %3.")
                 .arg(worker.report().delivered)
                 .arg(worker.report().parked)
                 .arg(worker.report().requests));
    return exitcode::ok;
}

int Program::migrate()
{
    Connection connection(settings(), {});
    connection.setLimit(std::chrono::seconds(migrationSeconds));
    const int before = storeschema::migrate(connection);
    const int after = storeschema::versionOf(connection);
    out.line(before == after ? Text::tr("The tables are of version %1 already.").arg(after)
                             : Text::tr("The tables are of version %1 now.").arg(after));
    return exitcode::ok;
}

int Program::admit()
{
    Connection connection(settings(), {});
    storeschema::requireUsable(connection);
    storeschema::admitTill(connection, options.role, options.shop);
    out.line(Text::tr("%1 is a till of shop %2.").arg(options.role, options.shop));
    return exitcode::ok;
}

int Program::doctor()
{
    const bool isWell = Doctor(settings(), out).run();
    return isWell ? exitcode::ok : exitcode::failed;
}

} // namespace orvastore
