// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/doctorcommand.h"

#include "till/commands/options.h"
#include "till/doctor/doctor.h"
#include "till/screen/output.h"

#include <cstdlib>
#include <cstring>

namespace till::doctor {
namespace {

QtMessageHandler formerHandler = nullptr;

/// The doctor says in its own words what the host and the plug-in log about a broken set-up.
void withoutTheirErrors(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool isTheirs =
        context.category != nullptr && (std::strcmp(context.category, "orva") == 0 ||
                                        std::strncmp(context.category, "poshost.", 8) == 0);
    if (!isTheirs) {
        formerHandler(type, context, text);
    }
}

} // namespace

ExitCode run(const Options& options, Output& out, Output& errors)
{
    Subject subject;
    subject.configFile = options.configFile;
    subject.plugin = options.plugin;
    subject.database = options.database;
    subject.card = options.card;
    Doctor doctor(subject);
    if (!options.verbose) {
        formerHandler = qInstallMessageHandler(withoutTheirErrors);
    }
    const Report report = doctor.examine();
    if (!options.verbose && !doctor.leftSomethingBehind()) {
        qInstallMessageHandler(formerHandler);
    }
    out.write(options.json ? report.json() : report.text(out.columns()));
    const ExitCode code = report.count(Mark::Fails) == 0 ? ExitCode::Ok : ExitCode::Failed;
    if (doctor.leftSomethingBehind()) {
        // the usual end would wait for locks of the loader that the thread holds
        std::_Exit(int(errors.tellTrouble(out, code)));
    }
    return code;
}

} // namespace till::doctor
