// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/doctor.h"

#include "host/http/connectionprobe.h"
#include "host/queue/databaseexamination.h"
#include "host/queue/storestate.h"
#include "till/checks/checkstore.h"
#include "till/doctor/addresschecks.h"
#include "till/doctor/configchecks.h"
#include "till/doctor/databasechecks.h"
#include "till/doctor/errand.h"
#include "till/doctor/pluginchecks.h"
#include "till/doctor/pluginvisit.h"
#include "till/doctor/queuechecks.h"
#include "till/doctor/recordingchecks.h"
#include "till/doctor/roadchecks.h"
#include "till/doctor/serverchecks.h"
#include "till/doctor/services.h"
#include "till/doctor/storecheck.h"
#include "till/doctor/systemchecks.h"
#include "till/text.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

// Those that follow each other make less than five seconds together: file, head start, plug-in,
// question. The others run beside them.
constexpr int readingMilliseconds = 500;
constexpr int headStartMilliseconds = 400;
constexpr int pluginMilliseconds = 1500;
constexpr int questionSeconds = 2;
constexpr int roadMilliseconds = 1500;
constexpr int databaseMilliseconds = 1500;
constexpr int checksMilliseconds = 500;
/// A busy disk may let a single page wait.
constexpr int longestDatabaseWait = 3500;
constexpr int longestStoreWait = 3500;
constexpr int wholeMilliseconds = 4800;
/// How much longer than its own limit something is waited for.
constexpr int grace = 300;

QString cardOf(const Subject& subject)
{
    return subject.card.isEmpty() ? u"0000000000000"_s : subject.card;
}

auto notEnded()
{
    poshost::ConnectionProbe probe;
    probe.trouble = poshost::ConnectionProbe::Trouble::Connection;
    probe.text = tr::Tr(u"doctorRoad"_s, Text::tr("the way to the server does not come to an end"));
    return probe;
}

/// What was found in the database.
struct DatabaseLook
{
    poshost::DatabaseExamination examination;
    std::optional<queuechecks::CheckLook> checks;
};

/// Everything that waits, begun together.
class Errands
{
public:
    Errands(const Subject& subject, const Report& report)
        : services(std::make_unique<Services>(subject.config))
    {
        const QString file = subject.databaseFile();
        if (report.isClear({u"database.file"_s}) && QFileInfo::exists(file)) {
            database.emplace([file] {
                return DatabaseLook{poshost::DatabaseExamination::of(file, databaseMilliseconds),
                                    queuechecks::lookAtChecks(file, checksMilliseconds)};
            });
        }
        const QUrl url(subject.serverAddress());
        if (report.isClear({u"address.scheme"_s, u"config.http.proxy"_s}) && !url.isEmpty()) {
            road.emplace([url] { return poshost::ConnectionProbe::of(url, roadMilliseconds); });
        }
        if (poshost::storestate::isConfigured()) {
            store.emplace(storecheck::look);
        }
        // a plug-in that hangs while it is loaded keeps everybody else from loading what they need
        const QDeadlineTimer headStart(headStartMilliseconds);
        if (database) {
            database->waitFor(headStart);
        }
        if (road) {
            road->waitFor(headStart);
        }
        if (store) {
            store->waitFor(headStart);
        }
        visit =
            std::make_unique<PluginVisit>(subject.pluginFile(), cardOf(subject), questionSeconds);
    }

    /// After all of them have come to their end or were given up.
    /// @return false: something hangs and was left behind
    bool putAway(const QDeadlineTimer& end)
    {
        const bool ended = visit->hasEnded(visit->hangs() ? QDeadlineTimer(0) : end) &&
                           !databaseHangs && !storeHangs;
        if (!ended) {
            // whoever hangs may still look at them
            static_cast<void>(services.release());
        }
        return ended;
    }

    poshost::ConnectionProbe awaitRoad()
    {
        return road ? road->await(roadEnd).value_or(notEnded()) : poshost::ConnectionProbe();
    }

    std::optional<DatabaseLook> awaitDatabase()
    {
        std::optional<DatabaseLook> found = database ? database->await(databaseEnd) : std::nullopt;
        databaseHangs = database && !found;
        return found;
    }

    std::optional<Exchange> awaitExchange()
    {
        return visit->exchange(QDeadlineTimer(questionSeconds * 1000 + grace));
    }

    bool looksAtStore() const { return store.has_value(); }
    std::optional<storecheck::StoreLook> awaitStore()
    {
        std::optional<storecheck::StoreLook> found = store->await(storeEnd);
        storeHangs = !found;
        return found;
    }

    std::unique_ptr<PluginVisit> visit;

private:
    std::unique_ptr<Services> services;
    const QDeadlineTimer databaseEnd{longestDatabaseWait};
    const QDeadlineTimer roadEnd{roadMilliseconds + grace};
    std::optional<Errand<poshost::ConnectionProbe>> road;
    std::optional<Errand<DatabaseLook>> database;
    std::optional<Errand<storecheck::StoreLook>> store;
    const QDeadlineTimer storeEnd{longestStoreWait};
    bool databaseHangs = false;
    bool storeHangs = false;
};

} // namespace

Report Doctor::examine()
{
    const QDeadlineTimer end(wholeMilliseconds);
    Report report;
    subject.read(readingMilliseconds);
    checkSystem(report);
    checkConfig(report, subject);
    checkAddress(report, subject);
    databasechecks::checkFile(report, subject);
    checkRecording(report, subject);

    Errands errands(subject, report);
    checkPlugin(report, subject, *errands.visit, QDeadlineTimer(pluginMilliseconds));
    checkRoad(report, subject, errands.awaitRoad());
    const bool asks = serverchecks::mayAsk(report);
    errands.visit->decide(asks);
    serverchecks::check(report, subject, asks ? errands.awaitExchange() : std::nullopt);
    const std::optional<DatabaseLook> database = errands.awaitDatabase();
    const auto examination = database ? std::optional(database->examination) : std::nullopt;
    databasechecks::checkContent(report, subject, examination);
    queuechecks::check(report, subject, examination, database ? database->checks : std::nullopt);
    if (errands.looksAtStore()) {
        storecheck::check(report, errands.awaitStore());
    }
    leftBehind = !errands.putAway(end);
    return report;
}

} // namespace till::doctor
