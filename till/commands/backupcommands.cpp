// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/backupcommands.h"

#include "till/backup/backupfile.h"
#include "till/backup/restoring.h"
#include "till/commands/workplace.h"
#include "till/options.h"
#include "till/screen/output.h"
#include "till/screen/timetext.h"
#include "till/text.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace till {
namespace {

QString asText(const QJsonObject& object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson());
}

/// What whoever restores has to know or to do.
QStringList notesOn(const RestoreReport& report, const Options& options)
{
    QStringList notes;
    if (report.undelivered > 0) {
        notes.append(Text::tr("Messages that were not delivered then: %1. The server may have them "
                              "since; they are sent again, which books nothing twice.")
                         .arg(report.undelivered));
    }
    if (report.needsCredentials) {
        notes.append(Text::tr("The copy holds no credentials; run \"orva-till queue reauthorize\" "
                              "before anything is delivered."));
    }
    if (!options.lastNumber) {
        notes.append(Text::tr("If this till has sold since then, ask whoever runs the loyalty "
                              "server for the highest number of its checks, and restore again "
                              "with --last-number."));
    }
    if (!report.setAside.isEmpty()) {
        notes.append(Text::tr("What was here before is kept as %1; checks that closed since then "
                              "are in it.")
                         .arg(report.setAside));
    }
    return notes;
}

} // namespace

ExitCode backupcommands::backup(Workplace& workplace, const Options& options, Output& out)
{
    const BackupReport report =
        backupfile::write(workplace.database(), options.target, options.withSecrets);
    if (options.json) {
        out.write(asText({{u"file"_s, options.target},
                          {u"checks"_s, report.checks},
                          {u"undelivered"_s, report.undelivered},
                          {u"withSecrets"_s, report.hasSecrets}}));
    } else {
        out.done(Text::tr("%1 holds checks: %2, messages that are not delivered: %3.")
                     .arg(options.target)
                     .arg(report.checks)
                     .arg(report.undelivered));
    }
    return ExitCode::Ok;
}

ExitCode backupcommands::restore(const Options& options, Output& out)
{
    const QString database = databaseFile(options, loadConfig(options));
    const RestoreReport report = restoreBackup(options.target, database, options.lastNumber);
    if (options.json) {
        out.write(asText({{u"madeAt"_s, report.madeAt.toString(Qt::ISODate)},
                          {u"checks"_s, report.checks},
                          {u"perhapsSent"_s, report.undelivered},
                          {u"nextNumber"_s, report.nextNumber},
                          {u"setAside"_s, report.setAside},
                          {u"needsCredentials"_s, report.needsCredentials}}));
    } else {
        // never in silence, whatever --quiet leaves out
        out.line(Text::tr("%1 is as it was on %2: checks: %3; the next one has the number %4.")
                     .arg(database, timetext::toTheMinute(report.madeAt))
                     .arg(report.checks)
                     .arg(report.nextNumber));
        out.notes(notesOn(report, options));
    }
    return ExitCode::Ok;
}

} // namespace till
