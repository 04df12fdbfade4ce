// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/commands/statuscommand.h"

#include "console/exitcode.h"
#include "console/table.h"
#include "store/commands/spoken.h"
#include "store/commands/untilstopped.h"
#include "store/database/connection.h"
#include "store/text.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <chrono>

using namespace Qt::StringLiterals;

namespace orvastore {

namespace {

constexpr std::chrono::seconds betweenShows(2);
constexpr qint64 secondsOfMinute = 60;
constexpr qint64 secondsOfHour = 3600;
constexpr qint64 secondsOfDay = 86400;

QString spanText(qint64 seconds)
{
    if (seconds < secondsOfMinute) {
        return Text::tr("%1 s").arg(seconds);
    }
    if (seconds < secondsOfHour) {
        return Text::tr("%1 min").arg(seconds / secondsOfMinute);
    }
    return seconds < secondsOfDay ? Text::tr("%1 h").arg(seconds / secondsOfHour)
                                  : Text::tr("%1 d").arg(seconds / secondsOfDay);
}

/// What came of an attempt, in words for people.
QString reasonText(const QString& meaning)
{
    const QHash<QString, QString> texts{
        {u"ServerAway"_s, Text::tr("the loyalty server was away")},
        {u"ServerError"_s, Text::tr("the loyalty server had an error")},
        {u"WrongAuthorization"_s, Text::tr("the credentials were refused")},
        {u"WrongAddress"_s, Text::tr("the address was wrong")},
        {u"Refused"_s, Text::tr("the message was refused")},
        {u"Duplicate"_s, Text::tr("the loyalty server knew the message")}};
    return texts.value(meaning, meaning);
}

double perSecond(qint64 recent)
{
    return double(recent) / StoreStatus::recentSeconds;
}

QJsonObject figuresOf(const StoreStatus& status)
{
    QJsonObject failures;
    for (const StoreStatus::Failures& failed : status.recentFailures) {
        failures.insert(failed.meaning, failed.count);
    }
    return {{u"lanes"_s, status.lanes},
            {u"messages"_s, status.messages},
            {u"messagesEstimated"_s, status.isEstimated},
            {u"oldestSeconds"_s, status.oldestSeconds},
            {u"parked"_s, status.parked},
            {u"behindParked"_s, status.behindParked},
            {u"heldQueues"_s, status.heldQueues},
            {u"pausedAccounts"_s, status.pausedAccounts},
            {u"recentSeconds"_s, StoreStatus::recentSeconds},
            {u"recentAttempts"_s, status.recentAttempts},
            {u"recentDeliveries"_s, status.recentDeliveries},
            {u"deliveriesPerSecond"_s, perSecond(status.recentDeliveries)},
            {u"recentFailures"_s, failures}};
}

} // namespace

int StatusCommand::run()
{
    Connection connection(settings, {});
    if (options.watch) {
        watch(connection);
    } else {
        show(StoreStatus::of(connection));
    }
    return console::exitcode::ok;
}

void StatusCommand::watch(Connection& connection)
{
    UntilStopped stop;
    do {
        try {
            const StoreStatus status = StoreStatus::of(connection);
            if (out.canRedraw() && !options.json) {
                static_cast<void>(std::fputs("\x1b[H\x1b[2J", stdout));
            }
            show(status);
        } catch (const StoreError& error) {
            connection.close();
            errors.line(u"orva-store: "_s + spoken::said(error.message()));
        }
    } while (out.isWhole() && !stop.hasComeWithin(betweenShows));
}

void StatusCommand::show(const StoreStatus& status)
{
    if (options.json) {
        showJson(status);
        return;
    }
    showFigures(status);
    showTills(status.tills);
}

void StatusCommand::showFigures(const StoreStatus& status)
{
    out.line(Text::tr("Lanes with work: %1.").arg(status.lanes));
    out.line((status.isEstimated ? Text::tr("Messages that wait: about %1.")
                                 : Text::tr("Messages that wait: %1."))
                 .arg(status.messages));
    if (status.lanes > 0) {
        out.line(Text::tr("The oldest has waited for %1.").arg(spanText(status.oldestSeconds)));
    }
    out.line(Text::tr("Parked: %1, behind these: %2.").arg(status.parked).arg(status.behindParked));
    if (status.heldQueues + status.pausedAccounts > 0) {
        out.line(Text::tr("The loyalty server is away, or does not accept what is sent; look at "
                          "\"queue list\"."));
    }
    out.line(Text::tr("Within the last %1: attempts %2, deliveries %3 (%4 a second).")
                 .arg(spanText(StoreStatus::recentSeconds))
                 .arg(status.recentAttempts)
                 .arg(status.recentDeliveries)
                 .arg(perSecond(status.recentDeliveries), 0, 'f', 1));
    for (const StoreStatus::Failures& failed : status.recentFailures) {
        out.line(
            Text::tr("Failed because %1: %2.").arg(reasonText(failed.meaning)).arg(failed.count));
    }
}

void StatusCommand::showTills(const QList<StoreStatus::Till>& tills)
{
    using Align = console::Table::Align;
    out.line(Text::tr("Tills that have handed over within %1 days: %2.")
                 .arg(StoreStatus::daysUntilGone)
                 .arg(tills.size()));
    if (tills.isEmpty()) {
        return;
    }
    console::Table table({{Text::tr("Shop")},
                          {Text::tr("Till")},
                          {Text::tr("Last hand-over")},
                          {Text::tr("Ago"), Align::Right}});
    for (const StoreStatus::Till& till : tills.first(std::min(tills.size(), shownTills))) {
        table.addRow({till.shop, till.name, till.lastHandOver.toString(u"yyyy-MM-dd HH:mm"_s),
                      spanText(till.silentSeconds)});
    }
    out.write(table.text(out.columns()));
    if (tills.size() > shownTills) {
        out.line(Text::tr("These have been silent for the longest time; --json has all."));
    }
}

/// With --watch a line each time, so that a reader sees where one ends.
void StatusCommand::showJson(const StoreStatus& status)
{
    QJsonArray tills;
    for (const StoreStatus::Till& till : status.tills) {
        tills.append(
            QJsonObject{{u"shop"_s, till.shop},
                        {u"till"_s, till.name},
                        {u"lastHandOver"_s, till.lastHandOver.toUTC().toString(Qt::ISODate)},
                        {u"silentSeconds"_s, till.silentSeconds}});
    }
    QJsonObject object = figuresOf(status);
    object.insert(u"tills"_s, tills);
    const QJsonDocument document(object);
    out.write(QString::fromUtf8(
        document.toJson(options.watch ? QJsonDocument::Compact : QJsonDocument::Indented)));
    if (options.watch) {
        out.write(u"\n"_s);
    }
}

} // namespace orvastore
