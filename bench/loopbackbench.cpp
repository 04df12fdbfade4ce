// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the transport costs beside a bare handle.

#include "bench/barecurl.h"
#include "bench/cannedtransport.h"
#include "bench/checkdata.h"
#include "bench/loadedplugin.h"
#include "bench/loopbackserver.h"
#include "bench/rows.h"
#include "bench/suites.h"
#include "bench/workplace.h"

namespace bench {

namespace {

/// The host's transport, which tells how long it had the thread. What a request takes besides is
/// the plug-in's own work, which the table lets it have.
class TimedTransport : public RestClient
{
public:
    TimedTransport() { MockFactory<RestClient>::mocked = this; }
    ~TimedTransport() override { MockFactory<RestClient>::mocked = nullptr; }

    void post(const QUrl& url, const QByteArray& body,
              const QHash<QString, QString>& headers) override
    {
        time = seconds(Clock::Wall, [&] {
            RestClient::post(url, body, headers);
            response = RestClient::getResponse();
        });
        posted = body;
    }

    double time = 0;
    QByteArray posted;
    QByteArray response;
};

void measureLoopback(benchmark::State& state, int lines)
{
    LoopbackServer server(makeAnswer(lines));
    Workplace workplace(server.url());
    const auto sale = makeSale(lines, makeCard());
    workplace.session.setDocument(sale);
    const LoadedPlugin plugin;
    BareCurl bare(server.url() + QStringLiteral("api/1.x/precheck"));
    TimedTransport transport;
    if (!plugin->request(sale)) {
        state.SkipWithError("the request failed");
        return;
    }
    const QByteArray body = transport.posted;
    // The bare handle also has its turn after a request, so that it finds the caches and the server
    // in the state in which the plug-in's transport finds them.
    double floorSum = 0;
    double subjectSum = 0;
    for ([[maybe_unused]] const auto turn : state) {
        plugin->request(sale);
        subjectSum += transport.time;
        state.SetIterationTime(transport.time);
        {
            const CannedTransport canned(transport.response);
            plugin->request(sale);
        }
        MockFactory<RestClient>::mocked = &transport;
        floorSum += seconds(Clock::Wall, [&] { bare.post(body); });
    }
    const auto turns = static_cast<double>(state.iterations());
    report(state, floorSum / turns, subjectSum / turns, subjectSum / floorSum, {1.10});
}

} // namespace

void addLoopbackRows()
{
    for (const int lines : {3, 10, 100}) {
        addRow("loopback/" + std::to_string(lines), 100,
               [lines](benchmark::State& state) { measureLoopback(state, lines); });
    }
}

} // namespace bench
