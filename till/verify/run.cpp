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

constexpr qint64 latestMilliseconds = 5000;
constexpr qsizetype ordinaryBytes = 60'000; ///< of a request of up to 100 lines
constexpr auto retryAfter = "retry-after"_L1;

bool isBusy(const Exchange& exchange)
{
    return exchange.reply.status == 429 || exchange.reply.status == 503;
}

/// Whether a till takes the status for trouble that passes.
bool isPassing(int status)
{
    return status == 408 || status == 425 || status == 429 || status >= 500;
}

bool saysWhen(const Reply& reply)
{
    static const QRegularExpression seconds(u"^[0-9]+$"_s);
    const QString text = QString::fromLatin1(reply.header("Retry-After"));
    return seconds.match(text).hasMatch() || reply.dateIn("Retry-After").isValid();
}

/// Whether it is an answer to the check at all, and no page or error in its place.
bool isOfItsCheck(const Reading& answer, const QByteArray& request)
{
    const QString id = answer.text({protocol::names::id});
    return answer.problem().isEmpty() && answer.rootName() == protocol::names::rawCheck &&
           !id.isEmpty() && id == Reading(request).text({protocol::names::id});
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

Outcome Run::playOnce(const Case& played)
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

/// A case that a status disturbed is played once more: tills come again too. Where it holds then,
/// the trouble has passed, and only what it was told as is judged.
Outcome Run::playOne(const Case& played)
{
    const Outcome first = playOnce(played);
    const Reply reply = first.complaint.exchange.reply;
    if (first.state != State::Broken || reply.status < 400) {
        return first;
    }
    left += bench.cleanUp();
    Outcome second = playOnce(played);
    if (second.state != State::Held || isPassing(reply.status)) {
        return second.state == State::Held ? second : first;
    }
    second.state = State::Broken;
    second.requirement = u"passing-trouble"_s;
    second.complaint = first.complaint;
    second.complaint.expected = u"408 / 425 / 429 / 500-599"_s;
    return second;
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
        left += bench.cleanUp();
        progress(++done, wanted.size());
    }
    results.left = left;
    watchBalances(results);
    watchTimes(results);
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

/// A balance that only some answers lack, such as the first ones for a card.
void Run::watchBalances(Results& results) const
{
    for (const Exchange& exchange : bench.trail()) {
        if (exchange.reply.status != 200 || exchange.url != bench.ways().precheck) {
            continue;
        }
        const Reading answer(exchange.reply.body);
        if (isOfItsCheck(answer, exchange.request) && !answer.saysBalance()) {
            Outcome missing{u"balance-always.whenever-asked"_s, u"balance-always"_s, State::Broken};
            missing.complaint = {{},
                                 exchange,
                                 answer.path(0, Reading::balancePath()),
                                 Text::tr("an amount such as 12.50"),
                                 Text::tr("nothing")};
            results.outcomes.prepend(missing);
            return;
        }
    }
}

/// An answer that came late, if only once: the first one for a card, say.
void Run::watchTimes(Results& results) const
{
    for (const Exchange& exchange : bench.trail()) {
        if (exchange.url == bench.ways().precheck && exchange.request.size() < ordinaryBytes &&
            exchange.reply.milliseconds > latestMilliseconds) {
            Outcome late{u"in-time.whenever-asked"_s, u"in-time"_s, State::Broken};
            late.complaint = {{},
                              exchange,
                              {},
                              u"%1 ms"_s.arg(latestMilliseconds),
                              u"%1 ms"_s.arg(exchange.reply.milliseconds)};
            results.outcomes.prepend(late);
            return;
        }
    }
}

} // namespace till::verify
