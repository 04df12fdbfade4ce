// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/commands/queuecommands.h"

#include "console/exitcode.h"
#include "console/queue/queueview.h"
#include "store/books/storequeue.h"
#include "store/commands/spoken.h"
#include "store/database/connection.h"
#include "store/schema/storeschema.h"
#include "store/text.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace orvastore {

namespace exitcode = console::exitcode;
using Command = Options::Command;
using poshost::QueueEntry;

namespace {

QString secretIn(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Failure(Text::tr("%1 cannot be read: %2").arg(fileName, file.errorString()));
    }
    return QString::fromUtf8(file.readLine()).trimmed();
}

} // namespace

int QueueCommands::run()
{
    Connection connection(settings, {});
    storeschema::requireUsable(connection);
    StoreQueue queue(connection);
    const qint64 message = options.message;
    const QString none =
        Text::tr("There is no undelivered message %1; look at \"queue list\".").arg(message);
    switch (options.command) {
    case Command::QueueShow: {
        const auto content = queue.show(message);
        if (!content) {
            throw Failure(none);
        }
        show(*content);
        return exitcode::ok;
    }
    case Command::QueueRetry:
        return change(queue.retry(message), Text::tr("Message %1 is due now."), none);
    case Command::QueuePark:
        return change(queue.park(message), Text::tr("Message %1 is parked."), none);
    case Command::QueueSettle:
        return change(queue.settle(message), Text::tr("Message %1 counts as delivered."),
                      Text::tr("There is no parked message %1; look at \"queue list\". Only what "
                               "is parked can be settled.")
                          .arg(message));
    case Command::QueueReauthorize:
        out.line(Text::tr("Messages that go out with the new credentials: %1.")
                     .arg(queue.reauthorize(options.queue, options.shop,
                                            secretIn(options.authorizationFile))));
        return exitcode::ok;
    default:
        list(queue.list());
        return exitcode::ok;
    }
}

int QueueCommands::change(bool found, const QString& done, const QString& none)
{
    if (!found) {
        throw Failure(none);
    }
    out.line(done.arg(options.message));
    return exitcode::ok;
}

void QueueCommands::list(const QList<QueueEntry>& entries)
{
    if (entries.isEmpty()) {
        out.line(Text::tr("Nothing is to be delivered."));
        return;
    }
    out.write(console::queueview::table(entries, out.columns()));
    if (entries.size() == StoreQueue::listedAtMost) {
        out.line(Text::tr("These are the oldest; there may be more."));
    }
}

void QueueCommands::show(const poshost::QueueContent& content)
{
    out.write(console::queueview::text(content, out.columns()));
}

} // namespace orvastore
