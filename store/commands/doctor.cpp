// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/commands/doctor.h"

#include "store/commands/spoken.h"
#include "store/database/connection.h"
#include "store/schema/storeschema.h"
#include "store/text.h"

namespace orvastore {

using namespace Qt::StringLiterals;

void Doctor::say(bool isWell, const QString& sentence)
{
    using Colour = console::Output::Colour;
    out.line(isWell ? u"ok     "_s : u"wrong  "_s, isWell ? Colour::Green : Colour::Red, sentence);
    allIsWell = allIsWell && isWell;
}

bool Doctor::run()
{
    try {
        Connection connection(settings, {});
        connection.open();
        say(true, Text::tr("A primary answers and takes writes."));
        storeschema::requireUsable(connection);
        say(true,
            Text::tr("The tables are of version %1.").arg(storeschema::versionOf(connection)));
        lookAtDurability(connection);
        lookAtDays(connection);
        lookAtQueue(connection);
        lookAtReturns(connection);
        lookAtSnapshots(connection);
    } catch (const StoreError& error) {
        say(false, spoken::said(error.message()));
    }
    return allIsWell;
}

void Doctor::lookAtDurability(Connection& connection)
{
    const Result found = connection.run("SELECT current_setting('fsync') = 'on', "
                                        "current_setting('synchronous_standby_names') <> '', "
                                        "current_setting('full_page_writes') = 'on'");
    const bool isSafe = found.isTrue(0, 0) && found.isTrue(0, 2);
    say(isSafe, isSafe ? Text::tr("What is committed is on the disk.")
                       : Text::tr("A power cut can lose what is committed: set fsync and "
                                  "full_page_writes to on."));
    say(true, found.isTrue(0, 1) ? Text::tr("A standby confirms each commit.")
                                 : Text::tr("No standby confirms commits "
                                            "(synchronous_standby_names is empty): the loss of the "
                                            "primary's disk loses checks."));
}

void Doctor::lookAtDays(Connection& connection)
{
    const bool isPrepared =
        connection
            .run("SELECT to_regclass('orva.messages_' || to_char(current_date + 1, "
                 "'YYYYMMDD')) IS NOT NULL")
            .isTrue(0, 0);
    say(isPrepared, isPrepared
                        ? Text::tr("The tables of the days to come are made.")
                        : Text::tr("Tomorrow's tables are missing: start a worker, which makes "
                                   "them."));
}

void Doctor::lookAtQueue(Connection& connection)
{
    const Result found =
        connection.run("SELECT (SELECT coalesce(sum(waiting), 0) FROM orva.lanes), "
                       "(SELECT count(*) FROM orva.parked WHERE waits_for IS NULL), "
                       "(SELECT count(*) FROM orva.holds), "
                       "(SELECT count(*) FROM orva.accounts WHERE paused_status IS NOT NULL), "
                       "(SELECT count(*) FROM orva.lanes l WHERE waiting > 0 "
                       "AND NOT EXISTS (SELECT 1 FROM orva.ready r WHERE r.lane = l.id) "
                       "AND NOT EXISTS (SELECT 1 FROM orva.delayed d WHERE d.lane = l.id))");
    const qint64 parked = found.number(0, 1);
    const qint64 stranded = found.number(0, 4);
    say(true, Text::tr("Messages that wait: %1.").arg(found.number(0, 0)));
    say(parked == 0,
        parked == 0
            ? Text::tr("No message is parked.")
            : Text::tr("Messages that are parked: %1; look at \"queue list\".").arg(parked));
    if (found.number(0, 2) + found.number(0, 3) > 0) {
        say(false, Text::tr("The loyalty server is away, or does not accept what is sent; look at "
                            "\"queue list\"."));
    }
    if (stranded > 0) {
        say(false, Text::tr("Lanes with work that no worker can find: %1; keep the database and "
                            "ask for help.")
                       .arg(stranded));
    }
}

/// A till gives back itself what an abandoned return has reserved, unless it is gone.
void Doctor::lookAtReturns(Connection& connection)
{
    if (storeschema::versionOf(connection) < storeschema::returnsFrom) {
        return;
    }
    const qint64 forgotten =
        connection
            .run("SELECT count(*) FROM orva.returns WHERE NOT is_closed AND NOT is_released "
                 "AND at < clock_timestamp() - interval '1 day'")
            .number(0, 0);
    say(forgotten == 0,
        forgotten == 0 ? Text::tr("No return has reserved goods for more than a day.")
                       : Text::tr("Returns that have reserved goods for more than a day: %1; look "
                                  "at \"returns list\".")
                             .arg(forgotten));
}

/// An old snapshot keeps every version of every row that has changed since.
void Doctor::lookAtSnapshots(Connection& connection)
{
    const qint64 minutes =
        connection
            .run("SELECT coalesce(max(extract(epoch FROM now() - xact_start)), 0)::bigint / 60 "
                 "FROM pg_stat_activity WHERE backend_xmin IS NOT NULL AND pid <> "
                 "pg_backend_pid()")
            .number(0, 0);
    constexpr qint64 longest = 60;
    say(minutes < longest,
        minutes < longest
            ? Text::tr("No old transaction keeps the tables from being cleaned.")
            : Text::tr("A transaction has been open for %1 minutes: end it, the tables grow.")
                  .arg(minutes));
}

} // namespace orvastore
