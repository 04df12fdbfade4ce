// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/pluginchecks.h"

#include "host/loyalty/basicplugin.h"
#include "till/desk/librarylog.h"
#include "till/doctor/libraryconfig.h"
#include "till/doctor/pluginvisit.h"
#include "till/doctor/report.h"
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
    PluginChecks(const QString& pluginFile, PluginVisit& steps, const QDeadlineTimer& limit)
        : file(pluginFile), visit(steps), deadline(limit)
    {}

    Finding fileIsThere() const
    {
        const QFileInfo information(file);
        const QString look = u"ls -lL %1"_s.arg(file);
        if (!information.exists()) {
            return Finding::fails(Text::tr("%1 is not there").arg(file),
                                  u"[till] plugin = \"/usr/lib/orva/liborva.so\""_s);
        }
        if (!information.isFile() || !information.isReadable()) {
            return Finding::fails(Text::tr("%1 is no file that can be read").arg(file), look);
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
        const QString mend = u"[till] plugin = \"/usr/lib/orva/liborva.so\""_s;
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
        return fits ? Finding::ok(text)
                    : Finding::fails(text, u"cmake --preset release && cmake --build --preset "
                                           "release --target orva"_s);
    }

    Finding hasLibraries()
    {
        loading = visit.loading(deadline);
        if (!loading) {
            return Finding::notNeeded(Text::tr("not known, since the plug-in is still loading"));
        }
        if (!loading->missingLibrary.isEmpty()) {
            return Finding::fails(Text::tr("%1 is not found").arg(loading->missingLibrary),
                                  u"ldd %1"_s.arg(file));
        }
        return Finding::ok(Text::tr("all are found"));
    }

    Finding loads() const
    {
        if (!loading) {
            return hangs();
        }
        return loading->loaded ? Finding::ok(Text::tr("with all its symbols"))
                               : Finding::fails(loading->error, u"ldd -r %1"_s.arg(file));
    }

    Finding fitsHost()
    {
        meeting = visit.meeting(deadline);
        if (!meeting) {
            return Finding::notNeeded(Text::tr("not known, since the plug-in does not get ready"));
        }
        if (meeting->failedAt && *meeting->failedAt != Step::Initialisation) {
            return Finding::fails(meeting->refusal,
                                  u"cmake -DORVA_ABSTRACT_PLUGIN_IID=%1 --preset release"_s.arg(
                                      QLatin1StringView(ABSTRACT_PLUGIN_IID)));
        }
        return Finding::ok(QLatin1StringView(ABSTRACT_PLUGIN_IID));
    }

    Finding isReady() const
    {
        if (!meeting) {
            return hangs();
        }
        if (meeting->failedAt) {
            return Finding::fails(meeting->refusal, u"orva-till --verbose checks"_s);
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
                   : Finding::warning(Text::tr("%1, whose errors are switched off").arg(way),
                                      u"unset QT_LOGGING_RULES"_s);
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
                u"LOG4QT_CONFIGURATION=/etc/orva/log4qt.properties"_s);
        }
        const QString where =
            Text::tr("%1, by %2, to %3").arg(way, config.file, config.targets.join(u", "_s));
        if (config.switchedOff) {
            return Finding::warning(Text::tr("%1, but switched off").arg(where),
                                    u"log4j.logger.orva=INFO"_s);
        }
        if (!config.cutFile.isEmpty()) {
            return Finding::warning(
                Text::tr("%1, but every start empties %2").arg(where, config.cutFile),
                config.cutMend);
        }
        return Finding::ok(where);
    }

    Finding hangs() const
    {
        return Finding::fails(Text::tr("does not come to an end in time"),
                              u"timeout 10 ldd -r %1"_s.arg(file));
    }

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
    PluginChecks checks(subject.pluginFile(), visit, deadline);
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
