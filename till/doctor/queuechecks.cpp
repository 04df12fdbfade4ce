// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/queuechecks.h"

#include "host/database/database.h"
#include "host/queue/databaseexamination.h"
#include "host/queue/queuebell.h"
#include "host/queue/storestate.h"
#include "host/services/currenttime.h"
#include "till/checks/checkstore.h"
#include "till/doctor/report.h"
#include "till/doctor/subject.h"
#include "till/reason.h"
#include "till/screen/timetext.h"
#include "till/text.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace till::doctor {

using queuechecks::CheckLook;

namespace {

constexpr qint64 warnHours = 1;
constexpr qint64 failHours = 24;
constexpr qint64 secondsAnHour = 3600;
constexpr qint64 hoursOfSuspension = 24;

qint64 hoursSince(const QDateTime& time)
{
    return time.secsTo(MockFactory<CurrentTime>::create()->currentDateTime()) / secondsAnHour;
}

/// The delivery tries a message that was refused again only when its time has come.
Mend deliverNow(const poshost::QueueEntry& first, const Subject& subject)
{
    const QString deliver = subject.command({u"queue"_s, u"deliver"_s});
    if (!first.nextAttemptAt.isValid()) {
        return Mend::command(deliver);
    }
    return Mend::command(subject.command({u"queue"_s, u"retry"_s, QString::number(first.id)}) +
                         u" && "_s + deliver);
}

Finding lookAtOldest(const poshost::DatabaseExamination& found, const Subject& subject)
{
    if (!found.firstWaiting) {
        return Finding::ok(Text::tr("nothing waits"));
    }
    const qint64 hours = hoursSince(found.firstWaiting->createdAt);
    const QString text = Text::tr("waiting: %1, the oldest (%2) since %3")
                             .arg(found.counts.waiting)
                             .arg(found.firstWaiting->id)
                             .arg(timetext::toTheMinute(found.firstWaiting->createdAt));
    const Mend mend = deliverNow(*found.firstWaiting, subject);
    if (hours >= failHours) {
        return Finding::fails(text, mend);
    }
    return hours >= warnHours ? Finding::warning(text, mend) : Finding::ok(text);
}

Finding lookAtPaused(const poshost::DatabaseExamination& found, const Subject& subject)
{
    if (!found.firstPaused) {
        return Finding::ok(Text::tr("none"));
    }
    return Finding::fails(Text::tr("waiting for other credentials or another address: %1 (%2)")
                              .arg(found.counts.paused)
                              .arg(said(found.firstPaused->obstacle)),
                          Mend::command(subject.command({u"queue"_s, u"reauthorize"_s}) +
                                        u" && "_s + subject.command({u"queue"_s, u"deliver"_s})));
}

Finding lookAtParked(const poshost::DatabaseExamination& found, const Subject& subject)
{
    if (!found.firstParked) {
        return Finding::ok(Text::tr("none"));
    }
    const QString number = QString::number(found.firstParked->id);
    return Finding::fails(
        Text::tr("waiting for somebody to decide: %1 (%2)")
            .arg(found.counts.parked)
            .arg(said(found.firstParked->obstacle)),
        Mend::words(
            Text::tr("look at it with %1, ask whoever runs the loyalty server, then \"queue "
                     "retry %2\" or, if the server has it, \"queue settle %2\"")
                .arg(subject.command({u"queue"_s, u"show"_s, number}), number)));
}

/// What a service or a till at work asks the store about within minutes.
Finding lookAtLeft(const SuspendedChecks& found, const Subject& subject)
{
    const QString text = found.onTheWaySince.isValid()
                             ? Text::tr("the store has not said where %1 are, the oldest since %2")
                                   .arg(found.onTheWay)
                                   .arg(timetext::toTheMinute(found.onTheWaySince))
                             : Text::tr("the store has not said where %1 are").arg(found.onTheWay);
    return Finding::warning(
        text, Mend::words(Text::tr("see that the store answers, then have it asked with %1")
                              .arg(subject.command({u"queue"_s, u"deliver"_s}))));
}

Finding lookAtSuspended(const SuspendedChecks& found, const Subject& subject)
{
    if (found.onTheWay > 0) {
        return lookAtLeft(found, subject);
    }
    if (found.count == 0) {
        return Finding::ok(Text::tr("none"));
    }
    const QString text = Text::tr("%1 suspended, the oldest (%2) since %3")
                             .arg(found.count)
                             .arg(found.oldest, timetext::toTheMinute(found.since));
    if (hoursSince(found.since) < hoursOfSuspension) {
        return Finding::ok(text);
    }
    return Finding::warning(
        text,
        Mend::words(Text::tr("take it up with \"restore %1\" in %2, then close it or abandon it")
                        .arg(found.oldest, subject.command({u"work"_s}))));
}

/// The goods are back and the money is out: what is left to decide is which return holds.
Finding lookAtSilent(const silentchecks::Waiting& found)
{
    if (found.refused == 0) {
        return Finding::ok(found.count == 0
                               ? Text::tr("the store has them")
                               : Text::tr("on their way to the store: %1").arg(found.count));
    }
    return Finding::warning(
        Text::tr("the store refuses %1, check %2 for one (%3)")
            .arg(found.refused)
            .arg(found.refusedCheck, said(found.why)),
        Mend::words(Text::tr("compare it with what the sentence names; where goods are only "
                             "reserved, \"orva-store returns release\" gives them free, and the "
                             "check is handed over within the hour; else it stays at this till "
                             "alone")));
}

/// Where a till is open it delivers itself, so nobody else need be there for it.
Finding lookAtService(const Subject& subject)
{
    if (poshost::QueueBell::isHeard(subject.databaseFile())) {
        return Finding::ok(Text::tr("a service delivers what tills leave"));
    }
    const QString text = Text::tr("nobody delivers while no till is open");
    return Finding::warning(
        text,
        Mend::command(
            subject.serviceStart.isEmpty()
                ? subject.command({u"--quiet"_s, u"queue"_s, u"deliver"_s, u"--watch"_s}) + u" &"_s
                : subject.serviceStart));
}

} // namespace

std::optional<queuechecks::CheckLook> queuechecks::lookAtChecks(const QString& databaseFile,
                                                                int milliseconds)
{
    try {
        const QSharedPointer<poshost::Database> database(
            poshost::Database::openForReading(databaseFile, QDeadlineTimer(milliseconds))
                .release());
        return CheckLook{CheckStore(database).suspended(), silentchecks::waiting(*database)};
    } catch (const std::exception&) {
        return std::nullopt; // what is wrong with the file its own checks say
    }
}

void queuechecks::check(Report& report, const Subject& subject,
                        const std::optional<poshost::DatabaseExamination>& found,
                        const std::optional<CheckLook>& checks)
{
    using Look = Finding (*)(const poshost::DatabaseExamination&, const Subject&);
    const QString schema = u"database.schema"_s;
    const bool exists = QFile::exists(subject.databaseFile());
    const auto notMade = [] { return Finding::notNeeded(Text::tr("not made yet")); };
    const auto queue = [&](const QString& id, const QString& title, Look look) {
        report.check(id, title, {schema},
                     [&] { return exists ? look(*found, subject) : notMade(); });
    };
    queue(u"queue.oldest"_s, Text::tr("Queue, waiting"), lookAtOldest);
    queue(u"queue.paused"_s, Text::tr("Queue, paused"), lookAtPaused);
    queue(u"queue.parked"_s, Text::tr("Queue, parked"), lookAtParked);
    const auto ofChecks = [&](const QString& id, const QString& title, const auto& look) {
        report.check(id, title, {schema}, [&] {
            if (!exists) {
                return notMade();
            }
            return checks ? look(*checks) : Finding::notNeeded(Text::tr("not read in time"));
        });
    };
    ofChecks(u"checks.suspended"_s, Text::tr("Suspended checks"),
             [&](const CheckLook& look) { return lookAtSuspended(look.suspended, subject); });
    if (poshost::storestate::isConfigured()) {
        ofChecks(u"store.checks"_s, Text::tr("Checks without a message"),
                 [](const CheckLook& look) { return lookAtSilent(look.silent); });
    }
    report.check(u"service"_s, Text::tr("Delivery without a till"), {u"database.file"_s},
                 [&] { return lookAtService(subject); });
}

} // namespace till::doctor
