// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/doctorcommand.h"

#include "till/doctor/doctor.h"
#include "till/failure.h"
#include "till/options.h"
#include "till/screen/output.h"
#include "till/support/supportarchive.h"
#include "till/text.h"

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

ExitCode print(const Report& report, const Options& options, Output& out)
{
    out.write(options.json ? report.json() : report.text());
    return report.count(Mark::Fails) == 0 ? ExitCode::Ok : ExitCode::Failed;
}

/// The report that another till has handed on.
ExitCode showElsewhere(const Options& options, Output& out)
{
    const auto report =
        Report::fromJson(SupportArchive::read(options.file).content(supportfiles::doctorJson));
    if (!report) {
        throw Failure(Text::tr("%1 holds no report; have it made again.").arg(options.file),
                      ExitCode::Usage);
    }
    return print(*report, options, out);
}

} // namespace

ExitCode run(const Options& options, Output& out, Output& errors)
{
    if (!options.file.isEmpty()) {
        try {
            return showElsewhere(options, out);
        } catch (const Failure& failure) {
            errors.failure(failure.text());
            return failure.exitCode();
        }
    }
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
    const ExitCode code = print(report, options, out);
    if (doctor.leftSomethingBehind()) {
        // the usual end would wait for locks of the loader that the thread holds
        std::_Exit(int(errors.tellTrouble(out, code)));
    }
    return code;
}

} // namespace till::doctor
