// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/init/initcommand.h"

#include "host/config/keysheet.h"
#include "host/config/knownkeys.h"
#include "host/services/config.h"
#include "input/readfile.h"
#include "till/configfile.h"
#include "till/desk/installedplugin.h"
#include "till/doctor/shell.h"
#include "till/failure.h"
#include "till/init/interview.h"
#include "till/init/plan.h"
#include "till/init/settings.h"
#include "till/init/trial.h"
#include "till/screen/output.h"
#include "till/text.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till::init {
namespace {

constexpr qint64 longestAnswers = 65536;

/// Where the machine's tills keep their checks.
QString databaseOfMachine()
{
    return u"/var/lib/orva/till.sqlite"_s;
}

/// Whoever administers the machine makes its settings; everybody else those of the current folder.
QString targetOf(const Options& options)
{
    const QString machine = configfile::ofMachine();
    if (options.configNamed) {
        return options.configFile;
    }
    const bool forMachine = ::geteuid() == 0 && !options.forSimulator &&
                            QFileInfo(QFileInfo(machine).absolutePath()).isDir();
    return forMachine ? machine : configfile::local();
}

QByteArray contentOf(const QString& answers)
{
    try {
        return input::readFile(answers, longestAnswers);
    } catch (const input::FileError& error) {
        const bool hasReason = error.kind() == input::FileError::Kind::Unreadable;
        throw Failure(Text::tr("%1 cannot be read as answers (%2).")
                          .arg(answers, hasReason ? error.reason()
                                                  : Text::tr("no regular file, or too long")),
                      ExitCode::Usage);
    }
}

/// The table of the configuration that the plug-in reads, as the sheet beside it says.
QString tableOfPlugin(const QString& named)
{
    poshost::keysheet::registerPlugin(chosenPlugin(named, Config()));
    const auto address = poshost::knownkeys::find(poshost::ConfigKey::Use::ServerAddress);
    if (!address) {
        throw Failure(
            Text::tr("There is no plug-in here that says which settings it needs; install "
                     "it, or name its file with --plugin."),
            ExitCode::Usage);
    }
    return address->table;
}

/// The server puts what is asked for right behind the address.
void endWithSlash(QString& address)
{
    if (!address.endsWith(u'/')) {
        address += u'/';
    }
}

} // namespace

InitCommand::InitCommand(const Options& given, Output& output, Output& errorOutput)
    : options(given), out(output), errors(errorOutput), target(targetOf(given))
{}

ExitCode InitCommand::run()
{
    const Plan plan(target, settings());
    ExitCode code = showChanges(plan);
    if (code == ExitCode::Ok) {
        tell(plan.isWritten() ? QStringList() : plan.write());
    }
    if (leftBehind) {
        // the usual end would wait for locks of the loader that a thread holds
        std::_Exit(int(errors.tellTrouble(out, code)));
    }
    return code;
}

Settings InitCommand::settings()
{
    serverTable = tableOfPlugin(options.plugin);
    Settings settings = options.forSimulator ? Settings::ofSimulator() : askedFor();
    settings.serverTable = serverTable;
    if (!options.database.isEmpty()) {
        settings.database = options.database;
    } else if (target == configfile::ofMachine()) {
        settings.database = databaseOfMachine();
    } else {
        settings.database = u"till.sqlite"_s;
    }
    settings.plugin = options.plugin;
    for (QString* const path : {&settings.database, &settings.plugin}) {
        if (path->contains(u'/')) { // as seen from here, not from the settings' folder
            *path = QFileInfo(*path).absoluteFilePath();
        }
    }
    return settings;
}

Settings InitCommand::askedFor()
{
    const bool person = options.answers.isEmpty() && ::isatty(STDIN_FILENO) != 0;
    if (person) {
        errors.line(Text::tr("Settings of a till, to be written to %1").arg(target));
    }
    std::istringstream file(options.answers.isEmpty() ? std::string()
                                                      : contentOf(options.answers).toStdString());
    Interview interview(options.answers.isEmpty() ? std::cin : file, person, errors);
    return interview.ask(
        [this](Settings& known) {
            known.serverTable = serverTable;
            endWithSlash(known.address);
            return options.offline ? QString() : trial::ofAddress(known.address);
        },
        [this](Settings& known) { return options.offline ? QString() : tryCredentials(known); });
}

QString InitCommand::tryCredentials(const Settings& known)
{
    const trial::Answer answer = trial::ofAll(known, options);
    leftBehind = leftBehind || answer.leftBehind;
    if (answer.isDoubtful) {
        errors.notes({Text::tr("User, password and key could not be tried here.")});
    } else if (answer.wrong.isEmpty() && !options.json) {
        out.done(Text::tr("The server takes user, password and key."));
    }
    return answer.wrong;
}

ExitCode InitCommand::showChanges(const Plan& plan)
{
    const QList<Change> changes = plan.changes();
    if (changes.isEmpty()) {
        return ExitCode::Ok;
    }
    QJsonArray rows;
    for (const Change& change : changes) {
        rows.append(QJsonObject{
            {u"what"_s, change.what}, {u"before"_s, change.before}, {u"after"_s, change.after}});
        if (!options.json) {
            out.line(u"- %1 = %2"_s.arg(change.what, change.before));
            out.line(u"+ %1 = %2"_s.arg(change.what, change.after));
        }
    }
    if (options.json) {
        out.write(QString::fromUtf8(
            QJsonDocument(QJsonObject{{u"settings"_s, target}, {u"changes"_s, rows}}).toJson()));
    }
    errors.failure(
        Text::tr("There are other settings already, and nothing was written. Change in %1 "
                 "what shall change, or move it away.")
            .arg(target));
    return ExitCode::WouldOverwrite;
}

void InitCommand::tell(const QStringList& made)
{
    if (options.json) {
        out.write(QString::fromUtf8(
            QJsonDocument(QJsonObject{{u"settings"_s, target},
                                      {u"written"_s, QJsonArray::fromStringList(made)}})
                .toJson()));
        return;
    }
    if (made.isEmpty()) {
        out.done(Text::tr("The settings in %1 are the same; nothing was written.").arg(target));
        return;
    }
    for (const QString& file : made) {
        out.done(Text::tr("Written: %1").arg(file));
    }
    if (options.forSimulator) {
        out.done(Text::tr("The server to try with: orva-simulator --port 8710"));
    }
    const bool isFound = target == configfile::local() || target == configfile::ofMachine();
    out.done(Text::tr("To look at the whole set-up: %1")
                 .arg(isFound ? u"orva-till doctor"_s
                              : doctor::shell::words(
                                    {u"orva-till"_s, u"--config"_s, target, u"doctor"_s})));
    if (target == configfile::ofMachine()) {
        out.done(
            Text::tr("To deliver without a till: %1").arg(u"systemctl restart orva-delivery"_s));
    }
}

} // namespace till::init
