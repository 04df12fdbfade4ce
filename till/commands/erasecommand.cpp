// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/erasecommand.h"

#include "host/database/database.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/queuedelivery.h"
#include "till/commands/queuewait.h"
#include "till/commands/workplace.h"
#include "till/doctor/libraryconfig.h"
#include "till/erase/databaseerasure.h"
#include "till/erase/fileerasure.h"
#include "till/erase/sharederasure.h"
#include "till/recording/recordfolder.h"
#include "till/screen/output.h"
#include "till/sharing/leftchecks.h"
#include "till/sharing/sharedstore.h"
#include "till/text.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// The files that the plug-in's library logs into, with those that it has set aside.
QStringList logFiles()
{
    QStringList files;
    const QStringList targets = doctor::LibraryConfig::find().targets;
    for (const QString& target : targets) {
        const QFileInfo log(target);
        const QStringList names =
            log.absoluteDir().entryList({log.fileName(), log.fileName() + u".*"_s}, QDir::Files);
        for (const QString& name : names) {
            files.append(log.absoluteDir().filePath(name));
        }
    }
    return files;
}

QString folderOf(const QString& file)
{
    return QFileInfo(file).absolutePath();
}

} // namespace

EraseCommand::EraseCommand(Workplace& place, const Options& given, Output& output)
    : workplace(place), options(given), out(output), customer(given.card)
{}

ExitCode EraseCommand::run()
{
    ErasureReport report;
    DatabaseErasure rows(workplace.database(), workplace.checks(), customer);
    FileErasure files(folders(), workplace.database().fileName(), logFiles(), customer);
    report.delivered = deliver(rows.look());
    files.look(); // a name may stand in one place and be found in another
    std::optional<SharedErasure> inStore;
    if (SharedStore* const store = workplace.sharedStore()) {
        inStore.emplace(*store, customer).look();
    }
    rows.erase(report);
    if (inStore) {
        inStore->erase(report);
    }
    tellOfLeavings(report);
    files.erase(report);
    out.write(options.json ? report.json(customer.card()) : report.text(customer.card()));
    return report.left.isEmpty() ? ExitCode::Ok : ExitCode::Failed;
}

/// What waits for a later attempt is tried now; what was parked waits for a person.
/// @return how many of them are delivered
int EraseCommand::deliver(const QList<qint64>& messages)
{
    if (messages.isEmpty()) {
        return 0;
    }
    constexpr int longestWait = 10;
    poshost::OutgoingQueue queue(workplace.database());
    for (const qint64 message : messages) {
        const auto content = queue.show(message);
        if (content && content->entry.state == poshost::QueueState::Waiting) {
            queue.retry(message);
        }
    }
    if (poshost::QueueDelivery(workplace.database()).deliverDue().elsewhere) {
        static_cast<void>(QueueWait::untilDelivered(workplace.database(), longestWait, {}));
    }
    workplace.notifyDelivery(); // whoever was kept out meanwhile goes on
    return int(std::count_if(messages.begin(), messages.end(), [&queue](qint64 message) {
        const auto content = queue.show(message);
        return !content || content->entry.state == poshost::QueueState::Delivered;
    }));
}

/// What is on its way to the store needs the customer for the loyalty system.
void EraseCommand::tellOfLeavings(ErasureReport& report)
{
    const QList<Leaving> leavings =
        LeftChecks(workplace.database(), workplace.checks()).unfinished();
    for (const Leaving& leaving : leavings) {
        if (customer.isInBytes(leaving.content)) {
            report.left.append(Text::tr("Check %1 is suspended; close or abandon it, then erase "
                                        "again.")
                                   .arg(leaving.id));
        }
    }
}

/// Where a till keeps what it writes.
QStringList EraseCommand::folders() const
{
    QStringList all{folderOf(workplace.database().fileName())};
    if (options.configNamed || options.configFound) {
        all.append(folderOf(options.configFile));
    }
    if (const auto records = RecordFolder::configured(loadConfig(options))) {
        all.append(records->name());
    }
    all += options.folders;
    return all;
}

} // namespace till
