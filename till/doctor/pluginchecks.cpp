// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/pluginchecks.h"

#include "host/loyalty/basicplugin.h"
#include "till/desk/librarylog.h"
#include "till/doctor/keymends.h"
#include "till/doctor/libraryconfig.h"
#include "till/doctor/pluginvisit.h"
#include "till/doctor/report.h"
#include "till/doctor/shell.h"
#include "till/doctor/subject.h"
#include "till/text.h"

#include <QFileInfo>
#include <QLibraryInfo>
#include <QLoggingCategory>
#include <QVersionNumber>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

using Step = PluginFailure::Step;

/// The plug-in's steps, each taken from the visit when its turn comes.
class PluginChecks
{
public:
    PluginChecks(const Subject& given, PluginVisit& steps, const QDeadlineTimer& limit)
        : subject(given), file(given.pluginFile()), visit(steps), deadline(limit)
    {}

    Finding fileIsThere() const
    {
        const QFileInfo information(file);
        if (!information.exists()) {
            return Finding::fails(Text::tr("%1 is not there").arg(file), anotherOne());
        }
        if (information.isFile() && !information.isReadable() && shell::isOwn(file)) {
            return Finding::fails(
                Text::tr("%1 is no file that can be read").arg(file),
                Mend::command(shell::chmod(u"u+r"_s, {information.absoluteFilePath()})).safe());
        }
        if (!information.isFile() || !information.isReadable()) {
            return Finding::fails(Text::tr("%1 is no file that can be read").arg(file),
                                  anotherOne());
        }
        return Finding::ok(file);
    }

    Finding isPlugin()
    {
        metadata = visit.metadata(deadline);
        if (!metadata) {
            return hangs();
        }
        const QString iid = metadata->metadata.value("IID"_L1).toString();
        const Mend mend = anotherOne();
        if (metadata->metadata.isEmpty()) {
            return Finding::fails(Text::tr("no plug-in (%1)").arg(metadata->error), mend);
        }
        if (iid != PluginHost::requiredIid()) {
            return Finding::fails(Text::tr("a plug-in for \"%1\", not for \"%2\"")
                                      .arg(iid, PluginHost::requiredIid()),
                                  mend);
        }
        return Finding::ok(
            Text::tr("class %1").arg(metadata->metadata.value("className"_L1).toString()));
    }

    Finding fitsQt() const
    {
        const int number = metadata->metadata.value("version"_L1).toInt();
        const QVersionNumber built(number >> 16 & 0xff, number >> 8 & 0xff);
        const QVersionNumber here(QLibraryInfo::version().majorVersion(),
                                  QLibraryInfo::version().minorVersion());
        const QString build = metadata->metadata.value("debug"_L1).toBool()
                                  ? Text::tr("debug build")
                                  : Text::tr("release build");
        const QString text = Text::tr("made with Qt %1 (%2), here is Qt %3")
                                 .arg(built.toString(), build, QLibraryInfo::version().toString());
        // Qt loads what was made with an older minor version of the same major one
        const bool fits = built.majorVersion() == here.majorVersion() && built <= here;
        return fits ? Finding::ok(text) : Finding::fails(text, anotherOne());
    }

    Finding hasLibraries()
    {
        loading = visit.loading(deadline);
        if (!loading) {
            return Finding::notNeeded(Text::tr("not known, since the plug-in is still loading"));
        }
        if (!loading->missingLibrary.isEmpty()) {
            return Finding::fails(
                Text::tr("%1 is not found").arg(loading->missingLibrary),
                keymends::ofPlugin(
                    subject,
                    Text::tr("install the package that holds %1").arg(loading->missingLibrary)));
        }
        return Finding::ok(Text::tr("all are found"));
    }

    Finding loads() const
    {
        if (!loading) {
            return hangs();
        }
        return loading->loaded ? Finding::ok(Text::tr("with all its symbols"))
                               : Finding::fails(loading->error, anotherOne());
    }

    Finding fitsHost()
    {
        meeting = visit.meeting(deadline);
        if (!meeting) {
            return Finding::notNeeded(Text::tr("not known, since the plug-in does not get ready"));
        }
        if (meeting->failedAt && *meeting->failedAt != Step::Initialisation) {
            return Finding::fails(meeting->refusal, anotherOne());
        }
        return Finding::ok(QLatin1StringView(ABSTRACT_PLUGIN_IID));
    }

    Finding isReady() const
    {
        if (!meeting) {
            return hangs();
        }
        if (meeting->failedAt) {
            return Finding::fails(
                meeting->refusal,
                keymends::ofPlugin(subject,
                                   Text::tr("do what the plug-in asks for; %1 shows its log")
                                       .arg(subject.command({u"--verbose"_s, u"doctor"_s}))));
        }
        return Finding::ok(Text::tr("the plug-in has registered"));
    }

    Finding logs() const
    {
        return meeting->log4QtFile.isEmpty()
                   ? toQt(Text::tr("without Log4Qt, to Qt's category orva"))
                   : throughLibrary(Text::tr("with Log4Qt (%1)").arg(meeting->log4QtFile));
    }

private:
    static Finding toQt(const QString& way)
    {
        const QLoggingCategory category("orva");
        return category.isCriticalEnabled()
                   ? Finding::ok(way)
                   : Finding::warning(
                         Text::tr("%1, whose errors are switched off").arg(way),
                         qEnvironmentVariableIsSet("QT_LOGGING_RULES")
                             ? Mend::command(u"unset QT_LOGGING_RULES"_s)
                             : Mend::words(Text::tr("switch the errors of the category orva on in "
                                                    "Qt's logging rules")));
    }

    static Finding throughLibrary(const QString& way)
    {
        const LibraryConfig config = LibraryConfig::find();
        if (config.targets.isEmpty() && librarylog::isKnown()) {
            return toQt(Text::tr("%1, without an appender: to the till's console, by "
                                 "Qt's category orva")
                            .arg(way));
        }
        if (config.targets.isEmpty()) {
            return Finding::warning(
                Text::tr("%1, without an appender: its lines are lost").arg(way),
                Mend::words(
                    Text::tr("write a log4qt.properties with an appender for the logger orva "
                             "into the folder of the program")));
        }
        const QString where =
            Text::tr("%1, by %2, to %3").arg(way, config.file, config.targets.join(u", "_s));
        if (config.switchedOff) {
            return Finding::warning(Text::tr("%1, but switched off").arg(where), config.mend);
        }
        if (!config.cutFile.isEmpty()) {
            return Finding::warning(
                Text::tr("%1, but every start empties %2").arg(where, config.cutFile), config.mend);
        }
        return Finding::ok(where);
    }

    Finding hangs() const
    {
        return Finding::fails(Text::tr("does not come to an end in time"), anotherOne());
    }

    Mend anotherOne() const
    {
        return keymends::ofPlugin(
            subject,
            Text::tr("install the loyalty plug-in anew, made for this version of the till, "
                     "and name its file as plugin under [till]"));
    }

    const Subject& subject;
    const QString file;
    PluginVisit& visit;
    const QDeadlineTimer deadline;
    std::optional<PluginMetadata> metadata;
    std::optional<PluginLoading> loading;
    std::optional<PluginMeeting> meeting;
};

} // namespace

void checkPlugin(Report& report, const Subject& subject, PluginVisit& visit,
                 const QDeadlineTimer& deadline)
{
    PluginChecks checks(subject, visit, deadline);
    const QString file = u"plugin.file"_s;
    const QString metadata = u"plugin.metadata"_s;
    const QString qt = u"plugin.qt"_s;
    const QString libraries = u"plugin.libraries"_s;
    const QString loads = u"plugin.loads"_s;
    const QString host = u"plugin.host"_s;
    const QString ready = u"plugin.ready"_s;
    report.check(file, Text::tr("Plug-in"), {u"config.till.plugin"_s},
                 [&] { return checks.fileIsThere(); });
    report.check(metadata, Text::tr("Plug-in, its kind"), {file},
                 [&] { return checks.isPlugin(); });
    report.check(qt, Text::tr("Plug-in, Qt"), {metadata}, [&] { return checks.fitsQt(); });
    report.check(libraries, Text::tr("Plug-in, libraries"), {qt},
                 [&] { return checks.hasLibraries(); });
    report.check(loads, Text::tr("Plug-in, loading"), {libraries}, [&] { return checks.loads(); });
    report.check(host, Text::tr("Plug-in, this host"), {loads}, [&] { return checks.fitsHost(); });
    report.check(ready, Text::tr("Plug-in, readiness"), {host}, [&] { return checks.isReady(); });
    report.check(u"logging"_s, Text::tr("Log"), {ready}, [&] { return checks.logs(); });
}

} // namespace till::doctor
