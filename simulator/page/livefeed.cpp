// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/livefeed.h"

#include "simulator/faults/faultplan.h"
#include "simulator/page/exchangebook.h"
#include "simulator/page/rulesstate.h"
#include "simulator/page/serverswitch.h"

#include <algorithm>
#include <memory>

namespace simulator {
namespace {

/// As many as an event tells; more are asked for.
constexpr qint64 mostRowsAtOnce = 300;

/// Some number that is another one after a fault was armed, taken away or has struck.
qint64 faultsVersion(const FaultPlan& plan)
{
    constexpr qint64 factor = 1'000'003;
    qint64 version = 0;
    for (const FaultPlan::State& state : plan.states()) {
        version = (version * factor + state.id * factor + state.struck) % (1LL << 40);
    }
    return version;
}

/// What one client was told.
class Feed
{
public:
    explicit Feed(const Sources& told) : sources(told) {}

    QByteArray news()
    {
        const ExchangeBook::Span span = sources.exchanges.span();
        const QByteArray state =
            ",\"faults\":" + QByteArray::number(faultsVersion(sources.faults)) +
            ",\"confirmations\":" + QByteArray::number(sources.exchanges.confirmations()) +
            ",\"rules\":" + QByteArray::number(sources.rules.version()) +
            ",\"away\":" + (sources.server.isAway() ? "true" : "false");
        if (hasBegun && span.last == lastTold && state == stateTold) {
            return {};
        }
        const bool isFew = hasBegun && span.last - lastTold <= mostRowsAtOnce;
        const QByteArrayList rows =
            isFew ? sources.exchanges.rows(lastTold, span.last - lastTold) : QByteArrayList();
        hasBegun = true;
        lastTold = span.last;
        stateTold = state;
        return "data: {\"first\":" + QByteArray::number(span.first) +
               ",\"last\":" + QByteArray::number(span.last) + ",\"rows\":[" + rows.join(',') + ']' +
               state + "}\n\n";
    }

private:
    const Sources sources;
    bool hasBegun = false;
    qint64 lastTold = 0;
    QByteArray stateTold;
};

} // namespace

std::vector<AdminRoute> eventRoutes(const Sources& sources)
{
    return {{"GET", "/events", [sources](const AdminCall&) {
                 Answer answer;
                 answer.contentType = "text/event-stream; charset=utf-8";
                 const auto feed = std::make_shared<Feed>(sources);
                 answer.stream = [feed]() -> std::optional<QByteArray> { return feed->news(); };
                 return answer;
             }}};
}

} // namespace simulator
