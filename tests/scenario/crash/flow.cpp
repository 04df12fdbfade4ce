// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/flow.h"

using namespace Qt::StringLiterals;

namespace {

/// Far above what a drain takes here, so that only a till that hangs meets it.
const QString drained = QStringLiteral("wait 30");

const QString copyName = QStringLiteral("copy.orva");

QStringList times(int repetitions, const QStringList& commands)
{
    QStringList all;
    for (int i = 0; i < repetitions; ++i) {
        all += commands;
    }
    return all;
}

TillRun work(const QStringList& commands)
{
    return {{u"work"_s}, commands + QStringList{drained, u"quit"_s}};
}

TillRun run(const QStringList& arguments)
{
    return {arguments, {}};
}

const QStringList sale{u"open sale1.toml"_s, u"close"_s};
const QStringList saleWithPoints{u"open sale1.toml"_s, u"points 40.50"_s, u"close"_s};
const QStringList returned{u"return return.toml"_s, u"request"_s, u"close"_s};

Flow selling(int repetitions)
{
    return {
        .name = u"sale"_s,
        .repetitions = repetitions,
        .runs = {work(times(
            repetitions, sale + QStringList{u"open sale2.toml"_s, u"quantity 2 1.250"_s, u"close"_s,
                                            u"open sale3.toml"_s, u"tender 500"_s, u"close"_s}))}};
}

Flow spending(int repetitions)
{
    return {.name = u"sale with points"_s,
            .repetitions = repetitions,
            .runs = {work(
                times(repetitions,
                      saleWithPoints + QStringList{u"open sale2.toml"_s, u"points all"_s,
                                                   u"close"_s, u"open sale1.toml"_s, u"points 10"_s,
                                                   u"points 5.55"_s, u"close"_s}))}};
}

Flow returning(int repetitions)
{
    QStringList sales;
    QStringList returns;
    for (int i = 0; i < repetitions; ++i) {
        sales += saleWithPoints;
        returns += QStringList{u"return return%1.toml"_s.arg(i + 1), u"request"_s, u"close"_s};
        returns += QStringList{u"return rest%1.toml"_s.arg(i + 1), u"close"_s};
    }
    return {.name = u"return"_s,
            .repetitions = repetitions,
            .preparation = sales + QStringList{drained},
            .runs = {work(returns)}};
}

Flow returningAtOnce(int repetitions)
{
    return {.name = u"return before its sale is delivered"_s,
            .repetitions = repetitions,
            .runs = {work(times(repetitions, saleWithPoints + returned))}};
}

Flow suspending(int repetitions)
{
    return {.name = u"suspend and restore"_s,
            .repetitions = repetitions,
            .runs = {work(times(repetitions, {u"open sale1.toml"_s, u"points 20"_s, u"suspend"_s,
                                              u"open sale2.toml"_s, u"request"_s, u"suspend"_s,
                                              u"restore last"_s, u"points all"_s, u"close"_s,
                                              u"restore last"_s, u"close"_s}))}};
}

Flow rollingBack(int repetitions)
{
    return {.name = u"rollback"_s,
            .repetitions = repetitions,
            .runs = {work(times(repetitions, {u"open sale1.toml"_s, u"points all"_s, u"abandon"_s,
                                              u"open sale2.toml"_s, u"points 20"_s, u"suspend"_s,
                                              u"restore last"_s, u"abandon"_s, u"open sale1.toml"_s,
                                              u"points 15"_s, u"close"_s}))}};
}

Flow delivering(int repetitions)
{
    return {.name = u"delivery"_s,
            .repetitions = repetitions,
            .preparation = times(repetitions, saleWithPoints + returned + sale),
            .queueHeld = true,
            .runs = {run({u"queue"_s, u"deliver"_s})}};
}

Flow reauthorizing(int repetitions)
{
    return {.name = u"reauthorize"_s,
            .repetitions = repetitions,
            .preparation = times(repetitions, sale + saleWithPoints),
            .queueHeld = true,
            .passwordChanges = true,
            .runs = {run({u"queue"_s, u"reauthorize"_s}), run({u"queue"_s, u"deliver"_s})}};
}

/// Several messages are under way at once, of several cards.
Flow deliveringInLanes(int repetitions)
{
    const QStringList sales = saleWithPoints + QStringList{u"open sale2.toml"_s, u"close"_s,
                                                           u"open sale3.toml"_s, u"close"_s};
    return {.name = u"lanes"_s,
            .repetitions = repetitions,
            .preparation = times(repetitions, saleWithPoints + returned + sales),
            .queueHeld = true,
            .runs = {run({u"--config"_s, u"lanes.toml"_s, u"queue"_s, u"deliver"_s})}};
}

/// A full queue is moved to the store, and a till sells with it.
Flow handingOver(int repetitions)
{
    TillRun selling = work(saleWithPoints + returned);
    selling.arguments = QStringList{u"--config"_s, u"store.toml"_s, u"work"_s};
    return {.name = u"hand-over"_s,
            .repetitions = repetitions,
            .preparation = times(repetitions, saleWithPoints + returned + sale),
            .queueHeld = true,
            .hasStore = true,
            .runs = {run({u"--config"_s, u"store.toml"_s, u"queue"_s, u"deliver"_s}), selling}};
}

/// The store keeps a check and its answer gets lost; the till delivers itself what was never handed
/// over, and then the store is there again.
Flow fallingBack(int repetitions)
{
    const QStringList deliver{u"queue"_s, u"deliver"_s};
    return {.name = u"fallback"_s,
            .repetitions = repetitions,
            .preparation = times(repetitions, saleWithPoints + sale + returned),
            .queueHeld = true,
            .hasStore = true,
            .storeGoesAway = true,
            .runs = {run(QStringList{u"--config"_s, u"unanswered.toml"_s} + deliver),
                     run(QStringList{u"--config"_s, u"away.toml"_s} + deliver),
                     run(QStringList{u"--config"_s, u"store.toml"_s} + deliver)}};
}

/// Suspended checks go through the store and come back.
Flow passingOn(int repetitions)
{
    TillRun passing =
        work(times(repetitions, {u"open sale1.toml"_s, u"points 20"_s, u"suspend --store"_s,
                                 u"open sale2.toml"_s, u"request"_s, u"suspend --store"_s,
                                 u"restore last"_s, u"points all"_s, u"suspend --store"_s,
                                 u"restore last"_s, u"close"_s, u"restore last"_s, u"close"_s}));
    passing.arguments = QStringList{u"--config"_s, u"store.toml"_s, u"work"_s};
    return {.name = u"leave and take up"_s,
            .repetitions = repetitions,
            .hasStore = true,
            .passesSuspended = true,
            .runs = {passing}};
}

/// The store keeps what it is given and its answers get lost; then it is there again.
Flow passingOnUnanswered(int repetitions)
{
    TillRun leaving =
        work(times(repetitions, {u"open sale1.toml"_s, u"points 20"_s, u"suspend --store"_s}));
    leaving.arguments = QStringList{u"--config"_s, u"unanswered.toml"_s, u"work"_s};
    TillRun taking = work(times(repetitions, {u"restore last"_s, u"close"_s}));
    taking.arguments = QStringList{u"--config"_s, u"store.toml"_s, u"work"_s};
    return {.name = u"leave without an answer"_s,
            .repetitions = repetitions,
            .hasStore = true,
            .passesSuspended = true,
            .runs = {leaving, taking}};
}

/// Returns are reserved in the store, one of them abandoned, and one with an answer that gets lost.
Flow reserving(int repetitions)
{
    QStringList sales;
    QStringList returns;
    QStringList unanswered;
    for (int i = 1; i <= repetitions; ++i) {
        sales += saleWithPoints;
        returns += QStringList{u"return return%1.toml"_s.arg(i), u"close"_s,
                               u"return rest%1.toml"_s.arg(i), u"abandon"_s};
        unanswered += QStringList{u"return rest%1.toml"_s.arg(i), u"close"_s};
    }
    TillRun first = work(returns);
    first.arguments = QStringList{u"--config"_s, u"store.toml"_s, u"work"_s};
    TillRun second = work(unanswered);
    second.arguments = QStringList{u"--config"_s, u"unanswered.toml"_s, u"work"_s};
    return {.name = u"reservation"_s,
            .repetitions = repetitions,
            .preparation = sales + QStringList{drained},
            .hasStore = true,
            .runs = {first, second}};
}

/// Nobody shows a card: no message takes the checks to the store, which is away at first, then
/// keeps them and lets its answer get lost, and then is there.
Flow sellingSilent(int repetitions)
{
    const QStringList deliver{u"queue"_s, u"deliver"_s};
    const QStringList plain{u"open plain.toml"_s, u"close"_s, u"return return.toml"_s, u"close"_s};
    TillRun away{QStringList{u"--config"_s, u"away.toml"_s, u"work"_s},
                 times(repetitions, plain) + QStringList{u"quit"_s}};
    TillRun there = work(times(repetitions, plain));
    there.arguments = QStringList{u"--config"_s, u"store.toml"_s, u"work"_s};
    return {.name = u"without a message"_s,
            .repetitions = repetitions,
            .hasStore = true,
            .sellsSilent = true,
            .runs = {away, run(QStringList{u"--config"_s, u"unanswered.toml"_s} + deliver), there}};
}

/// A file of an older version with a full queue becomes one of this version.
Flow migrating(int repetitions)
{
    return {.name = u"migration"_s,
            .repetitions = repetitions,
            .preparation = times(repetitions, saleWithPoints + sale),
            .queueHeld = true,
            .olderFile = true,
            .runs = {run({u"checks"_s}), work(returned)}};
}

/// What is old leaves the till's file for the archive; here everything that is delivered is old.
Flow archiving(int repetitions)
{
    return {.name = u"archive"_s,
            .repetitions = repetitions,
            .preparation =
                times(repetitions, saleWithPoints + returned + sale) + QStringList{drained},
            .runs = {run({u"archive"_s}), run({u"archive"_s, u"--compact"_s})}};
}

/// A copy of books with an archive.
Flow backingUp(int repetitions)
{
    return {.name = u"backup"_s,
            .repetitions = repetitions,
            .preparation =
                times(repetitions, saleWithPoints + returned + sale) + QStringList{drained},
            .preparingRuns = {run({u"archive"_s}), work(sale)},
            .copying = Copying::Backup,
            .runs = {run({u"backup"_s, copyName})}};
}

/// Books that have moved on since the copy, in the archive's file of the same month, too.
Flow restoring(int repetitions)
{
    return {.name = u"restore"_s,
            .repetitions = repetitions,
            .preparation =
                times(repetitions, saleWithPoints + returned + sale) + QStringList{drained},
            .preparingRuns = {run({u"archive"_s}), work(saleWithPoints + sale),
                              run({u"backup"_s, copyName}), run({u"archive"_s})},
            .copying = Copying::Restore,
            .runs = {run({u"restore"_s, copyName})}};
}

/// The first day: the till's file and all tables are made.
Flow starting()
{
    return {.name = u"first start"_s, .runs = {run({u"checks"_s}), work(saleWithPoints)}};
}

} // namespace

QList<Flow> allFlows(int repetitions)
{
    return {selling(repetitions),
            spending(repetitions),
            returning(repetitions),
            returningAtOnce(repetitions),
            suspending(repetitions),
            rollingBack(repetitions),
            delivering(repetitions),
            reauthorizing(repetitions),
            deliveringInLanes(repetitions),
            handingOver(repetitions),
            fallingBack(repetitions),
            reserving(repetitions),
            sellingSilent(repetitions),
            passingOn(repetitions),
            passingOnUnanswered(repetitions),
            migrating(repetitions),
            archiving(repetitions),
            backingUp(repetitions),
            restoring(repetitions),
            starting()};
}
