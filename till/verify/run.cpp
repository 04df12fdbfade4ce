// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/run.h"

#include "input/nearestname.h"
#include "till/failure.h"
#include "till/reason.h"
#include "till/text.h"

#include <QElapsedTimer>
#include <QRegularExpression>

#include <algorithm>
#include <numeric>
#include <random>

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

constexpr auto retryAfter = "retry-after"_L1;

bool isBusy(const Exchange& exchange)
{
    return exchange.reply.status == 429 || exchange.reply.status == 503;
}

bool saysWhen(const Reply& reply)
{
    static const QRegularExpression seconds(u"^[0-9]+$"_s);
    const QString text = QString::fromLatin1(reply.header("Retry-After"));
    return seconds.match(text).hasMatch() || reply.dateIn("Retry-After").isValid();
}

} // namespace

QList<Case> Run::chosen(const QStringList& names)
{
    const QList<Case> all = allCases();
    if (names.isEmpty()) {
        return all;
    }
    QList<Case> some;
    QStringList known;
    for (const Case& candidate : all) {
        const QString name = QLatin1StringView(candidate.name);
        const QString requirement = QLatin1StringView(candidate.requirement);
        known << name << requirement;
        if (names.contains(name) || names.contains(requirement)) {
            some.append(candidate);
        }
    }
    for (const QString& name : names) {
        if (!known.contains(name)) {
            const QString near = input::nearestName(name, known);
            throw Failure(near.isEmpty()
                              ? Text::tr("There is no case or requirement \"%1\"; --list has "
                                         "their names.")
                                    .arg(name)
                              : Text::tr("There is no case or requirement \"%1\"; did you mean "
                                         "\"%2\"?")
                                    .arg(name, near),
                          ExitCode::Usage);
        }
    }
    return some;
}

Outcome Run::playOne(const Case& played)
{
    Outcome outcome{QLatin1StringView(played.name), QLatin1StringView(played.requirement)};
    QElapsedTimer clock;
    clock.start();
    try {
        played.play(bench);
        outcome.state = State::Held;
    } catch (const Broken& broken) {
        outcome.state = State::Broken;
        outcome.complaint = broken.complaint;
        if (!broken.complaint.requirement.isEmpty()) {
            outcome.requirement = broken.complaint.requirement;
        }
    } catch (const NotTried& missing) {
        outcome.reason = missing.reason;
    } catch (const std::exception& error) {
        outcome.reason = reasonOf(error);
    }
    outcome.milliseconds = clock.elapsed();
    return outcome;
}

Results Run::play(const Progress& progress)
{
    Results results;
    results.seed = order;
    QList<qsizetype> turns(wanted.size());
    std::iota(turns.begin(), turns.end(), 0);
    if (order != 0) {
        std::mt19937 chance(order);
        std::shuffle(turns.begin(), turns.end(), chance);
    }
    results.outcomes.resize(wanted.size());
    qint64 done = 0;
    for (const qsizetype turn : turns) {
        results.outcomes[turn] = playOne(wanted.at(turn));
        results.left += bench.cleanUp();
        progress(++done, wanted.size());
    }
    watch(results);
    return results;
}

/// What is seen in all exchanges together.
void Run::watch(Results& results) const
{
    Outcome busy{u"retry-after.whenever-busy"_s, retryAfter};
    busy.reason = Text::tr("the server was never busy");
    for (const Exchange& exchange : bench.trail()) {
        if (exchange.reply.status == 200 && exchange.url == bench.ways().precheck) {
            results.times.answers.append(exchange.reply.milliseconds);
        }
        if (!isBusy(exchange) || busy.state == State::Broken) {
            continue;
        }
        busy.state = saysWhen(exchange.reply) ? State::Held : State::Broken;
        busy.complaint = {{},
                          exchange,
                          u"Retry-After"_s,
                          Text::tr("seconds, or a date"),
                          QString::fromLatin1(exchange.reply.header("Retry-After"))};
    }
    std::sort(results.times.answers.begin(), results.times.answers.end());
    if (busy.state == State::Broken || wanted.size() == allCases().size()) {
        results.outcomes.prepend(busy);
    }
}

} // namespace till::verify
