// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/doctorcommand.h"

#include "till/commands/examination.h"
#include "till/doctor/doctor.h"
#include "till/doctor/mending.h"
#include "till/failure.h"
#include "till/options.h"
#include "till/screen/output.h"
#include "till/support/supportarchive.h"
#include "till/text.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

QString shown(const Report& report, const Mending& mending, const Options& options, int width)
{
    if (options.json) {
        QJsonObject object = report.toJson();
        if (options.fix) {
            object.insert(u"fixes"_s, mending.json());
        }
        return QString::fromUtf8(QJsonDocument(object).toJson());
    }
    return options.quiet ? mending.failures() + report.failures(width)
                         : mending.text() + report.text(width);
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
    out.write(shown(*report, Mending(), options, out.columns()));
    return report->count(Mark::Fails) == 0 ? ExitCode::Ok : ExitCode::Failed;
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
    const Subject subject = examination::subjectOf(options);
    Mending mending;
    std::optional<examination::WithoutLog> withoutLog(options.verbose);
    auto doctor = std::make_unique<Doctor>(subject);
    Report report = doctor->examine();
    while (options.fix && !doctor->leftSomethingBehind() && mending.applyNext(report)) {
        doctor = std::make_unique<Doctor>(subject);
        report = doctor->examine();
    }
    if (doctor->leftSomethingBehind()) {
        withoutLog->stay();
    }
    withoutLog.reset();
    out.write(shown(report, mending, options, out.columns()));
    const ExitCode code = report.count(Mark::Fails) == 0 ? ExitCode::Ok : ExitCode::Failed;
    if (doctor->leftSomethingBehind()) {
        // the usual end would wait for locks of the loader that the thread holds
        std::_Exit(int(errors.tellTrouble(out, code)));
    }
    return code;
}

} // namespace till::doctor
