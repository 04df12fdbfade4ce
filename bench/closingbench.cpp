// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Closing a check: the commit with its durable message.

#include "bench/baredatabase.h"
#include "bench/checkdata.h"
#include "bench/openorva.h"
#include "bench/rows.h"
#include "bench/suites.h"
#include "bench/workplace.h"
#include "host/database/database.h"

using namespace Qt::StringLiterals;

namespace bench {

namespace {

void measureClosing(benchmark::State& state, int lines)
{
    const Workplace workplace;
    const auto database =
        QSharedPointer<poshost::Database>::create(workplace.file(u"till.sqlite"_s));
    DBQueueBroker broker(database);
    Singleton<DBQueueBroker>::instance = &broker;
    BareDatabase bare(workplace.file(u"bare.sqlite"_s));
    const auto card = makeCard();
    const auto sale = makeSale(lines, card);
    for (const auto& impact : makeUsedImpacts(lines, 2, card)) {
        sale->addImpact(impact);
    }
    const QDomDocument answer = parsedAnswer(lines);
    OpenOrva orva;
    orva.init();
    QDomDocument confirmation;
    double floorSum = 0;
    double subjectSum = 0;
    for ([[maybe_unused]] const auto turn : state) {
        confirmation = answer.cloneNode().toDocument();
        orva.interface->setLastResponse(confirmation);
        const double time = seconds(Clock::Wall, [&] { orva.commit(sale); });
        subjectSum += time;
        state.SetIterationTime(time);
        floorSum += seconds(Clock::Wall, [&] { bare.insert(confirmation.toString(1).toUtf8()); });
    }
    Singleton<DBQueueBroker>::instance = nullptr;
    const auto turns = static_cast<double>(state.iterations());
    report(state, floorSum / turns, subjectSum / turns, subjectSum / floorSum, {1.25});
}

} // namespace

void addClosingRows()
{
    addRow("closing/100", 100, [](benchmark::State& state) { measureClosing(state, 100); });
}

} // namespace bench
