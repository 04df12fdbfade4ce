// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/queuecommands.h"

#include "console/queue/queueview.h"
#include "host/database/database.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/queuedelivery.h"
#include "host/queue/storestate.h"
#include "till/checks/checkstore.h"
#include "till/commands/queuewait.h"
#include "till/commands/queuewatch.h"
#include "till/commands/workplace.h"
#include "till/desk/credentials.h"
#include "till/failure.h"
#include "till/screen/checkview.h"
#include "till/screen/output.h"
#include "till/screen/progress.h"
#include "till/text.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace till {
namespace {

QString jsonText(const QJsonObject& object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson());
}

} // namespace

ExitCode QueueCommands::run()
{
    poshost::OutgoingQueue queue(workplace.database());
    switch (options.command) {
    case Command::QueueShow:
        return show();
    case Command::QueueDeliver:
        return options.watch ? watch() : deliver();
    case Command::QueueRetry:
        return change(queue.retry(options.message), Text::tr("Message %1 is due now."));
    case Command::QueuePark:
        return change(queue.park(options.message), Text::tr("Message %1 is parked."));
    case Command::QueueSettle:
        return settle();
    case Command::QueueReauthorize:
        return reauthorize();
    default:
        return list();
    }
}

ExitCode QueueCommands::list()
{
    const auto entries = poshost::OutgoingQueue(workplace.database()).list(options.all);
    if (options.json) {
        out.write(console::queueview::json(entries));
    } else if (entries.isEmpty()) {
        out.line(options.all ? Text::tr("The queue is empty.")
                             : Text::tr("Nothing is to be delivered."));
    } else {
        out.write(console::queueview::table(entries, out.columns()));
    }
    return ExitCode::Ok;
}

ExitCode QueueCommands::show()
{
    auto content = poshost::OutgoingQueue(workplace.database()).show(options.message);
    if (!content) {
        throw Failure(
            Text::tr("There is no message %1; look at \"queue list --all\".").arg(options.message));
    }
    // what is shown is sent on to others; the card is its owner's
    const QString card = workplace.checks().cardOfMessage(options.message);
    if (!card.isEmpty()) {
        for (QString* const text : {&content->payload, &content->lastAnswer}) {
            text->replace(card, checkview::shortCard(card));
        }
    }
    out.write(options.json ? console::queueview::json(*content)
                           : console::queueview::text(*content, out.columns()));
    return ExitCode::Ok;
}

poshost::DeliveryReport QueueCommands::drain()
{
    const poshost::QueueCounts before = poshost::OutgoingQueue(workplace.database()).counts();
    Progress progress(errors, Text::tr("Delivering"));
    poshost::QueueDelivery delivery(workplace.database());
    delivery.onProgress([&](const poshost::DeliveryReport& sofar) {
        progress.show(sofar.delivered + sofar.handedOver + sofar.parked,
                      before.waiting + before.paused);
    });
    const poshost::DeliveryReport report = delivery.deliverDue();
    workplace.notifyDelivery(); // whoever was kept out meanwhile goes on
    return report;
}

ExitCode QueueCommands::watch()
{
    errors.notes(workplace.settleSuspended());
    const QString file = workplace.database().fileName();
    out.done(Text::tr("Delivering the queue of %1 until stopped.").arg(file));
    QueueWatch service(file);
    service.archiveAfter(workplace.keepChecksDays());
    service.writeMetricsInto(workplace.metricsFile());
    service.run();
    return ExitCode::Ok;
}

ExitCode QueueCommands::deliver()
{
    errors.notes(workplace.settleSuspended());
    const poshost::DeliveryReport report = drain();
    const poshost::QueueCounts counts = poshost::OutgoingQueue(workplace.database()).counts();
    const int left = QueueWait::undelivered(counts);
    const int silent = QueueWait::silentUnderWay(workplace.database());
    if (options.json) {
        out.write(jsonText({{u"elsewhere"_s, report.elsewhere},
                            {u"requests"_s, report.requests},
                            {u"delivered"_s, report.delivered},
                            {u"handedOver"_s, report.handedOver},
                            {u"parked"_s, report.parked},
                            {u"undelivered"_s, left},
                            {u"checksWithoutMessage"_s, silent}}));
    } else {
        out.done(
            report.elsewhere
                ? Text::tr("Another process is delivering this queue.")
                : Text::tr("Delivered: %1, parked: %2.").arg(report.delivered).arg(report.parked));
        if (poshost::storestate::isConfigured()) {
            out.done(Text::tr("Handed over to the store: %1.").arg(report.handedOver));
        }
        if (silent > 0) {
            out.done(
                Text::tr("Checks without a message on their way to the store: %1.").arg(silent));
        }
        out.done(QueueWait::text(counts));
    }
    return left + silent == 0 ? ExitCode::Ok : ExitCode::Failed;
}

ExitCode QueueCommands::change(bool found, const QString& done)
{
    if (!found) {
        throw Failure(Text::tr("There is no undelivered message %1; look at \"queue list\".")
                          .arg(options.message));
    }
    workplace.notifyDelivery();
    if (options.json) {
        out.write(jsonText({{u"id"_s, options.message}}));
    } else {
        out.done(done.arg(options.message));
    }
    return ExitCode::Ok;
}

ExitCode QueueCommands::settle()
{
    if (!poshost::OutgoingQueue(workplace.database()).settle(options.message)) {
        throw Failure(
            Text::tr("There is no parked message %1; look at \"queue list\". Only what is "
                     "parked can be settled.")
                .arg(options.message));
    }
    return change(true, Text::tr("Message %1 counts as delivered."));
}

ExitCode QueueCommands::reauthorize()
{
    workplace.loadPlugin();
    const Credentials credentials = Credentials::of(workplace.loyaltySystem());
    const int messages = poshost::OutgoingQueue(workplace.database())
                             .reauthorize(credentials.queue, credentials.authorization);
    workplace.notifyDelivery();
    if (options.json) {
        out.write(jsonText({{u"messages"_s, messages}}));
    } else {
        out.done(
            Text::tr("%n messages go out with the configured credentials.", nullptr, messages));
    }
    return ExitCode::Ok;
}

} // namespace till
