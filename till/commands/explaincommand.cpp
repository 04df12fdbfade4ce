// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/explaincommand.h"

#include "till/checks/checkstore.h"
#include "till/explain/checkexplainer.h"
#include "till/explain/explainview.h"
#include "till/failure.h"
#include "till/screen/output.h"
#include "till/sharing/sharedreading.h"
#include "till/text.h"

namespace till {

ExitCode ExplainCommand::run(SharedStore* shared, Output& notes)
{
    if (shared != nullptr && options.record != QStringLiteral("last") &&
        !store.hasClosed(options.record)) {
        if (const auto kept = SharedReading(*shared).find(options.record)) {
            return explainOther(*kept, shared, notes);
        }
    }
    return write(store.findClosed(options.record), shared);
}

ExitCode ExplainCommand::explainOther(const orvastore::KeptCheck& kept, SharedStore* shared,
                                      Output& notes)
{
    try {
        const ExitCode code = write(SharedReading::checkOf(kept), shared);
        notes.notes({Text::tr("Check %1 is till %2's: it is explained from what it shows itself; "
                              "what was recorded with it is there.")
                         .arg(kept.identifier, kept.till)});
        return code;
    } catch (const Failure& failure) {
        throw Failure(Text::tr("Check %1 is till %2's, and what the server has answered is "
                               "recorded there: explain it there. (%3)")
                          .arg(kept.identifier, kept.till, failure.text()));
    }
}

ExitCode ExplainCommand::write(const Check& check, SharedStore* shared)
{
    CheckExplainer explainer(store, till, records, options.configFile);
    if (shared != nullptr) {
        explainer.lookElsewhere([&](const Check& back) -> std::optional<CheckExplainer::Origin> {
            const auto found = SharedReading(*shared).originOf(back);
            return found ? std::optional(CheckExplainer::Origin{found->sale, found->earlier})
                         : std::nullopt;
        });
    }
    const Explanation explanation = explainer.explain(check);
    out.write(options.json ? explainview::json(check, explanation)
                           : explainview::text(check, explanation));
    return explanation.disagreements() == 0 ? ExitCode::Ok : ExitCode::Differs;
}

} // namespace till
