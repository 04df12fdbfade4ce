// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/storecheck.h"

#include "host/queue/storesetup.h"
#include "till/doctor/report.h"
#include "till/reason.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

constexpr int secondsToAnswer = 1;

Finding findingOf(const std::optional<storecheck::StoreLook>& found)
{
    const QString sellsOn = Text::tr("see that the database server runs and can be reached from "
                                     "here; until then the till sells and keeps its checks");
    if (!found) {
        return Finding::warning(Text::tr("does not answer in time"), Mend::words(sellsOn));
    }
    if (!found->problem.isEmpty()) {
        return Finding::fails(said(found->problem),
                              Mend::words(Text::tr("put right what is said, or take [store] out of "
                                                   "the configuration; until then the till sells "
                                                   "and keeps its checks")));
    }
    if (found->reached.end != orvastore::StoreEnd::Done) {
        return Finding::warning(said(found->reached.error), Mend::words(sellsOn));
    }
    return Finding::ok(Text::tr("takes checks"));
}

} // namespace

storecheck::StoreLook storecheck::look()
{
    std::optional<poshost::StoreSetup> setup = poshost::StoreSetup::configured();
    StoreLook found;
    if (setup) {
        setup->settings.timeoutSeconds = secondsToAnswer;
        if (const auto client = setup->client(found.problem)) {
            found.reached = client->reach();
        }
    }
    return found;
}

void storecheck::check(Report& report, const std::optional<StoreLook>& found)
{
    report.check(u"store"_s, Text::tr("Store of the shop"), {}, [&] { return findingOf(found); });
}

} // namespace till::doctor
