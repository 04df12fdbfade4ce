// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/handover_p.h"

#include "host/queue/deliverylog_p.h"
#include "host/queue/deliverypolicy.h"
#include "host/services/currenttime.h"

#include <algorithm>

namespace poshost {

using namespace Qt::StringLiterals;
using orvastore::StoreEnd;
using orvastore::StoreResult;

namespace {

constexpr qsizetype checksInTurn = 4;

} // namespace

HandOverReport HandOver::run(const StoreSetup& setup, const std::function<bool(int)>& progressed)
{
    std::optional<qint64> nextErrand = errands.run(setup);
    while (nextErrand && *nextErrand <= CurrentTime::milliseconds() && progressed(0)) {
        nextErrand = errands.run(setup); // it does some at a time
    }
    HandOverReport report = handOverAll(setup, progressed);
    if (nextErrand) {
        report.nextAttempt = std::min(report.nextAttempt.value_or(*nextErrand), *nextErrand);
    }
    return report;
}

HandOverReport HandOver::handOverAll(const StoreSetup& setup,
                                     const std::function<bool(int)>& progressed)
{
    HandOverReport report;
    if (!journal.isAnythingDue()) {
        return report;
    }
    const qint64 now = CurrentTime::milliseconds();
    const bool waits = failures > 0 && now < nextTry && now >= failedAt; // clocks are put back
    bool goesOn = !waits && prepare(setup);
    while (goesOn) {
        goesOn = handOverSome(setup, report, progressed) && progressed(report.handed) &&
                 journal.isAnythingDue();
    }
    report.parked = journal.takeParked();
    if (failures > 0) {
        report.nextAttempt = nextTry;
    }
    return report;
}

/// @return whether there is a store that takes checks
bool HandOver::prepare(const StoreSetup& setup)
{
    if (!client) {
        Message problem;
        const QSharedPointer<orvastore::StoreClient> made = setup.client(problem);
        if (!made) {
            postpone(problem);
            return false;
        }
        const std::lock_guard guard(mutex);
        client = made;
        if (interrupted) {
            client->interrupt();
        }
    }
    return !isTrouble(client->reach());
}

/// A few checks at a time, so that commits that take long are no silence.
QList<StoreResult> HandOver::handOverInTurn(const QList<orvastore::HandedCheck>& checks,
                                            const HandOverReport& report,
                                            const std::function<bool(int)>& progressed)
{
    QList<StoreResult> results;
    bool goesOn = true;
    while (goesOn && results.size() < checks.size()) {
        const QList<orvastore::HandedCheck> few = checks.mid(results.size(), checksInTurn);
        QList<StoreResult> ofFew = client->handOver(few);
        while (ofFew.size() < few.size()) { // of these nothing is known
            ofFew.append(StoreResult{StoreEnd::Unknown, {}});
        }
        results += ofFew;
        const StoreEnd end = results.last().end;
        goesOn = end == StoreEnd::Done || end == StoreEnd::Refused;
        static_cast<void>(progressed(report.handed)); // a store that is interrupted ends by itself
    }
    while (results.size() < checks.size()) { // not even tried
        results.append(StoreResult{StoreEnd::Unreachable, results.last().error});
    }
    return results;
}

/// @return whether the store took part in it to the end
bool HandOver::handOverSome(const StoreSetup& setup, HandOverReport& report,
                            const std::function<bool(int)>& progressed)
{
    const QList<HandOverEntry> entries = journal.begin(setup.shop);
    QList<orvastore::HandedCheck> checks;
    for (const HandOverEntry& entry : entries) {
        checks.append(entry.check);
    }
    if (checks.isEmpty()) {
        return true;
    }
    const QList<StoreResult> results = handOverInTurn(checks, report, progressed);
    journal.record(entries, results);
    bool isSound = true;
    for (const StoreResult& result : results) {
        report.handed += result.end == StoreEnd::Done ? 1 : 0;
        if (result.end == StoreEnd::Refused) {
            qCWarning(logDelivery).noquote() << result.error.ru();
        } else if (isSound && isTrouble(result)) {
            isSound = false;
        }
    }
    return isSound;
}

/// Takes what the store said for how the store stands.
bool HandOver::isTrouble(const StoreResult& result)
{
    if (result.end != StoreEnd::Done) {
        postpone(result.error);
        return true;
    }
    failures = 0;
    lastTrouble = {};
    return false;
}

void HandOver::postpone(const Message& why)
{
    ++failures;
    failedAt = CurrentTime::milliseconds();
    const double jitter = std::uniform_real_distribution<>(0, 1)(random);
    nextTry =
        failedAt + std::min(deliverypolicy::backOff(failures, jitter), longestWaitMilliseconds);
    if (!(why == lastTrouble)) { // a store that is away is news once, not at every attempt
        qCWarning(logDelivery).noquote() << why.ru();
        lastTrouble = why;
    }
}

void HandOver::interrupt()
{
    errands.interrupt();
    const std::lock_guard guard(mutex);
    interrupted = true;
    if (client) {
        client->interrupt();
    }
}

} // namespace poshost
