// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/commands/queuecommands.h"

#include "console/exitcode.h"
#include "console/printable.h"
#include "console/table.h"
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
using poshost::QueueState;

namespace {

QString stateText(QueueState state)
{
    switch (state) {
    case QueueState::Paused:
        return Text::tr("paused");
    case QueueState::Parked:
        return Text::tr("parked");
    default:
        return Text::tr("waiting");
    }
}

QString timeText(const QDateTime& time)
{
    return time.isValid() ? time.toString(u"yyyy-MM-dd HH:mm:ss"_s) : QString();
}

QString obstacle(const QueueEntry& entry)
{
    return entry.waitsFor != 0 ? Text::tr("waits for message %1").arg(entry.waitsFor)
                               : spoken::said(entry.obstacle);
}

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
    using Align = console::Table::Align;
    if (entries.isEmpty()) {
        out.line(Text::tr("Nothing is to be delivered."));
        return;
    }
    console::Table table(
        {{Text::tr("No"), Align::Right},
         {Text::tr("Queue")},
         {Text::tr("State")},
         {Text::tr("Steps"), Align::Right},
         {Text::tr("Attempts"), Align::Right},
         {Text::tr("Status"), Align::Right},
         {Text::tr("Created")},
         {Text::tr("Next attempt")},
         {Text::tr("What is in the way"), Align::Left, console::Table::Narrow::Below}});
    for (const QueueEntry& entry : entries) {
        table.addRow({QString::number(entry.id), entry.queue, stateText(entry.state),
                      u"%1/%2"_s.arg(entry.stepsDone).arg(entry.steps),
                      QString::number(entry.attempts),
                      entry.lastStatus == 0 ? QString() : QString::number(entry.lastStatus),
                      timeText(entry.createdAt), timeText(entry.nextAttemptAt), obstacle(entry)});
    }
    out.write(table.text(out.columns()));
    if (entries.size() == StoreQueue::listedAtMost) {
        out.line(Text::tr("These are the oldest; there may be more."));
    }
}

void QueueCommands::show(const poshost::QueueContent& content)
{
    list({content.entry});
    for (qsizetype i = 0; i < content.addresses.size(); ++i) {
        out.line(Text::tr("Step %1: %2").arg(i + 1).arg(content.addresses.at(i)));
    }
    for (auto it = content.headers.cbegin(); it != content.headers.cend(); ++it) {
        out.line(u"%1: %2"_s.arg(it.key(), it.value()));
    }
    out.write(u'\n' + content.payload + u'\n');
    if (!content.lastAnswer.isEmpty()) {
        out.line(Text::tr("The server's last refusal:"));
        out.write(content.lastAnswer + u'\n');
    }
}

} // namespace orvastore
