// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/explaincommand.h"

#include "till/checks/checkstore.h"
#include "till/explain/checkexplainer.h"
#include "till/explain/explainview.h"
#include "till/screen/output.h"

namespace till {

ExitCode ExplainCommand::run()
{
    const Check check = store.findClosed(options.record);
    const Explanation explanation =
        CheckExplainer(store, till, records, options.configFile).explain(check);
    out.write(options.json ? explainview::json(check, explanation)
                           : explainview::text(check, explanation));
    return explanation.disagreements() == 0 ? ExitCode::Ok : ExitCode::Differs;
}

} // namespace till
