// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/results.h"

#include "till/text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

/// What no run over the wire can see.
QString whyNever(const QString& requirement)
{
    if (requirement == "booked-is-durable"_L1) {
        return Text::tr("a run cannot cut the server's power");
    }
    if (requirement == "late-confirmation"_L1) {
        return Text::tr("a run does not last for 90 days");
    }
    if (requirement == "passing-trouble"_L1) {
        return Text::tr("a run cannot bring the server into trouble");
    }
    return {};
}

} // namespace

QString nameOf(State state)
{
    return state == State::Held ? u"held"_s : state == State::Broken ? u"broken"_s : u"notTried"_s;
}

qint64 Times::share(int percent) const
{
    return answers.isEmpty() ? 0 : answers.at((answers.size() - 1) * percent / 100);
}

QList<qint64> Times::limits()
{
    return {10, 30, 100, 300, 1000, 3000, 5000};
}

QList<int> Times::histogram() const
{
    QList<int> counts;
    qsizetype before = 0;
    for (const qint64 limit : limits()) {
        const auto upTo = std::upper_bound(answers.begin(), answers.end(), limit);
        counts.append(int(upTo - answers.begin() - before));
        before = upTo - answers.begin();
    }
    counts.append(int(answers.size() - before));
    return counts;
}

QList<Verdict> Results::verdicts() const
{
    QList<Verdict> all;
    for (const Requirement& requirement : Requirement::all()) {
        Verdict verdict{requirement, State::NotTried, whyNever(requirement.name), {}};
        for (const Outcome& outcome : outcomes) {
            if (outcome.requirement != requirement.name) {
                continue;
            }
            verdict.outcomes.append(outcome);
            if (outcome.state == State::Broken) {
                verdict.state = State::Broken;
            } else if (outcome.state == State::Held && verdict.state == State::NotTried) {
                verdict.state = State::Held;
            } else if (outcome.state == State::NotTried && verdict.reason.isEmpty()) {
                verdict.reason = outcome.reason;
            }
        }
        if (!verdict.outcomes.isEmpty() || !verdict.reason.isEmpty()) {
            all.append(verdict);
        }
    }
    return all;
}

QStringList Results::broken() const
{
    QStringList names;
    for (const Outcome& outcome : outcomes) {
        if (outcome.state == State::Broken && !names.contains(outcome.requirement)) {
            names.append(outcome.requirement);
        }
    }
    return names;
}

int Results::count(State state) const
{
    return int(std::count_if(outcomes.begin(), outcomes.end(),
                             [state](const Outcome& outcome) { return outcome.state == state; }));
}

bool Results::isGood(bool strict) const
{
    return std::none_of(outcomes.begin(), outcomes.end(), [strict](const Outcome& outcome) {
        return outcome.state == State::Broken &&
               (strict || Requirement::named(outcome.requirement).isMust);
    });
}

} // namespace till::verify
