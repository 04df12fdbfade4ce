// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/scene.h"

#include "host/database/database.h"
#include "host/database/filelock.h"
#include "host/database/statement.h"
#include "simulator/rules/rulesreader.h"
#include "tests/scenario/crash/crashrecord.h"
#include "tests/scenario/crash/difference.h"
#include "tests/scenario/crash/passing.h"
#include "tests/support/cashier.h"
#include "tests/support/olderdatabase.h"
#include "tests/support/tillsettings.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>

#include <optional>

using namespace Qt::StringLiterals;
using tests::Cashier;
using tests::CheckCount;

namespace {

const QString tillFile = QStringLiteral("till.sqlite");
const QString storeFile = QStringLiteral("store.sqlite");
const QString serverFile = QStringLiteral("server.sqlite");
const QString recordFile = QStringLiteral("record");
const QString traceFile = QStringLiteral("trace");

const QString saleText = QStringLiteral(R"(type = "sale"
card = "%1"
[[line]]
code = "1001"
name = "Чай"
price = 149.90
quantity = 2
minPrice = 100.00
[[line]]
code = "1002"
name = "Яблоки"
price = 89.90
quantity = 0.765
unit = "kg"
)");

const QString returnText = QStringLiteral(R"(type = "return"
sale = "%1"
[[line]]
position = %2
quantity = %3
)");

void copyFolder(const QString& from, const QString& to)
{
    QDir().mkpath(to);
    const QStringList folders = QDir(from).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& name : folders) {
        copyFolder(from + u'/' + name, to + u'/' + name);
    }
    const QStringList names = QDir(from).entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        if (!QFile::copy(from + u'/' + name, to + u'/' + name)) {
            throw SceneError(u"%1 cannot be copied to %2"_s.arg(name, to));
        }
    }
}

/// Counts in a copy: opening an older file would bring it up to date.
CheckCount countChecks(const QString& tillDatabase)
{
    const QString copy = tillDatabase + u".copy"_s;
    if (!QFile::copy(tillDatabase, copy)) {
        throw SceneError(u"%1 cannot be copied"_s.arg(tillDatabase));
    }
    const QString archive = u"-archive"_s;
    QDir(copy + archive).removeRecursively();
    if (QDir(tillDatabase + archive).exists()) {
        copyFolder(tillDatabase + archive, copy + archive);
    }
    const CheckCount count = CheckCount::read(copy);
    QFile::remove(copy);
    QDir(copy + archive).removeRecursively();
    return count;
}

/// Stands for the port in what was prepared.
constexpr int nowhere = 0;

/// A queued message knows the address of the server that it was made for; here that moves. An older
/// file stays one.
void moveQueue(const QString& tillDatabase, int fromPort, int toPort)
{
    poshost::Database database(
        tillDatabase, [](poshost::Database&) {}, poshost::Database::defaultBusyMilliseconds);
    poshost::Statement move(database, u"UPDATE queue_bodies SET digest = NULL, "
                                      "urls = replace(urls, ?, ?)"_s);
    move.bind(u":%1/"_s.arg(fromPort)).bind(u":%1/"_s.arg(toPort)).execute();
}

void readRecord(const QString& file, Outcome& outcome)
{
    QFile record(file);
    if (!record.open(QFile::ReadWrite) || record.size() != qint64(sizeof(CrashRecord))) {
        throw SceneError(u"%1 cannot be read"_s.arg(file));
    }
    const auto* read = reinterpret_cast<const CrashRecord*>(record.map(0, record.size()));
    outcome.calls = read->calls;
    outcome.stopped = read->stopped != 0;
    outcome.at = QString::fromUtf8(read->at);
}

} // namespace

Scene::Scene(const Programs& built, const QString& sceneFolder)
    : programs(built), folder(sceneFolder)
{
    if (!QDir().mkpath(folder)) {
        throw SceneError(u"%1 cannot be made"_s.arg(folder));
    }
}

Scene::~Scene() = default;

QProcessEnvironment Scene::environment(const Stop* stop) const
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    if (!programs.hostFolder.isEmpty()) {
        variables.insert(u"LD_LIBRARY_PATH"_s, programs.hostFolder);
    }
    if (stop != nullptr) {
        variables.insert(u"LD_PRELOAD"_s, programs.crashPoint);
        variables.insert(u"ORVA_CRASH_RECORD"_s, path(recordFile));
        variables.insert(u"ORVA_CRASH_FOLDER"_s, folder);
        variables.insert(u"ORVA_CRASH_AT"_s, QString::number(stop->call));
        variables.insert(u"ORVA_CRASH_WAY"_s, stop->way);
        if (stop->call == 0) {
            variables.insert(u"ORVA_CRASH_TRACE"_s, path(traceFile));
        }
        variables.insert(u"ORVA_CRASH_SEED"_s, QString::number(stop->seed));
    }
    return variables;
}

void Scene::writeFile(const QString& name, const QString& text) const
{
    QFile file(path(name));
    if (!file.open(QFile::WriteOnly | QFile::Truncate) || file.write(text.toUtf8()) < 0) {
        throw SceneError(u"%1: %2"_s.arg(file.fileName(), file.errorString()));
    }
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

void Scene::writeFiles(const Flow& flow) const
{
    const QStringList cards{u"2200000000017"_s, u"2200000000024"_s, u"2200000000031"_s};
    for (qsizetype i = 0; i < cards.size(); ++i) {
        writeFile(u"sale%1.toml"_s.arg(i + 1), saleText.arg(cards.at(i)));
    }
    writeFile(u"plain.toml"_s, QString(saleText).remove(u"card = \"%1\"\n"_s));
    writeFile(u"return.toml"_s, returnText.arg(u"last"_s, u"1"_s, u"1"_s));
    for (int sale = 1; sale <= flow.repetitions; ++sale) {
        const QString number = QString::number(sale);
        writeFile(u"return%1.toml"_s.arg(sale), returnText.arg(number, u"1"_s, u"1"_s));
        writeFile(u"rest%1.toml"_s.arg(sale), returnText.arg(number, u"2"_s, u"0.500"_s));
    }
}

void Scene::writeConfig(const QString& password) const
{
    tests::TillSettings settings;
    settings.server = u"http://127.0.0.1:%1/"_s.arg(port);
    settings.password = password;
    settings.timeoutSeconds = 20;
    settings.database = tillFile;
    settings.plugin = programs.plugin;
    // behind the last table: whoever archives archives everything
    writeFile(u"orva.toml"_s, settings.toml() + u"keepChecksDays = 0\n"_s);
    writeFile(u"lanes.toml"_s, settings.toml() + u"[queue]\nconnections = 4\n"_s);
    writeStoreConfigs(settings.toml());
}

void Scene::writeStoreConfigs(const QString& plain) const
{
    const QString text = plain + u"[store]\ndatabase = \"%1\"\nmodule = \"%2\"\n"_s;
    const QString fallback = u"fallback = \"deliver\"\nfallbackAfter = 1\n"_s;
    writeFile(u"store.toml"_s, text.arg(u"file="_s + storeFile, programs.store));
    writeFile(u"away.toml"_s, text.arg(u"away"_s, programs.store) + fallback);
    writeFile(u"unanswered.toml"_s,
              text.arg(u"unanswered file="_s + storeFile, programs.store) + fallback);
}

void Scene::startServer(const Stop* stop)
{
    QStringList arguments{u"--quiet"_s, u"--database"_s, path(serverFile)};
    if (passwordChanged) {
        arguments << u"--config"_s << path(u"rules.toml"_s);
    }
    constexpr int attempts = 50;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        server = std::make_unique<Process>(
            programs.server, arguments + QStringList{u"--port"_s, QString::number(port)}, folder,
            environment(stop));
        if (!server->waitForLine(u"Listening on "_s).isNull()) {
            return;
        }
        if (!server->wasKilled()) {
            break;
        }
        stop = nullptr; // it was stopped before it listened
    }
    throw SceneError(u"the server does not start: %1"_s.arg(server->errors()));
}

/// Restarts a server that was stopped.
void Scene::keepServerUp()
{
    constexpr int look = 2;
    if (server->hasEnded(look)) {
        startServer(nullptr);
    }
}

std::unique_ptr<Process> Scene::runTill(const TillRun& run, const Stop* stop)
{
    const bool armed = stop != nullptr && stop->actor == Actor::Till;
    auto till = std::make_unique<Process>(programs.till, run.arguments, folder,
                                          environment(armed ? stop : nullptr));
    till->feed(run.commands);
    constexpr int look = 10;
    const QDeadlineTimer deadline(Process::longestWait);
    while (!till->hasEnded(look)) {
        if (deadline.hasExpired()) {
            throw SceneError(u"the till hangs"_s);
        }
        keepServerUp();
    }
    keepServerUp();
    return till;
}

void Scene::prepare(const Flow& flow)
{
    writeFiles(flow);
    if (flow.name == u"first start"_s) {
        writeFile(recordFile, QString(qsizetype(sizeof(CrashRecord)), QChar(u'\0')));
        return;
    }
    startServer(nullptr);
    writeConfig(u"secret"_s);
    std::optional<poshost::FileLock> held;
    if (flow.queueHeld) {
        held.emplace(path(tillFile) + u".delivery-lock"_s);
    }
    runTill({{u"checks"_s}, {}}, nullptr);
    if (!flow.preparation.isEmpty()) {
        const auto till = runTill({{u"work"_s}, flow.preparation}, nullptr);
        if (till->exitCode() != 0 || till->output().contains(u"error: "_s)) {
            throw SceneError(u"the preparation fails: "_s + till->output() + till->errors());
        }
    }
    for (const TillRun& run : flow.preparingRuns) {
        const auto till = runTill(run, nullptr);
        if (till->exitCode() != 0) {
            throw SceneError(u"the preparation fails: "_s + till->output() + till->errors());
        }
    }
    held.reset();
    server->terminate();
    if (flow.passwordChanges) {
        writeFile(u"rules.toml"_s, QString::fromUtf8(simulator::builtInRules())
                                       .replace(u"\"secret\""_s, u"\"new secret\""_s));
        passwordChanged = true;
        startServer(nullptr);
        runTill({{u"queue"_s, u"deliver"_s}, {}}, nullptr); // refused, which pauses the queue
        server->terminate();
    }
    moveQueue(path(tillFile), port, nowhere);
    if (flow.olderFile) {
        poshost::Database database(path(tillFile));
        tests::makeOlder(database);
    }
    writeFile(recordFile, QString(qsizetype(sizeof(CrashRecord)), QChar(u'\0')));
}

void Scene::playRuns(const Flow& flow, const Stop& stop, Cashier& cashier)
{
    for (const TillRun& run : flow.runs) {
        const auto till = runTill(run, &stop);
        const bool killed = till->wasKilled();
        if (!run.commands.isEmpty()) {
            cashier.read(run.commands, till->output());
        }
        if (killed) {
            return;
        }
    }
}

/// What people do after a crash: start again, take up what was suspended, wait for the queue.
void Scene::recover(const Flow& flow, QStringList& problems)
{
    if (flow.passwordChanges) {
        runTill({{u"queue"_s, u"reauthorize"_s}, {}}, nullptr);
    }
    if (flow.storeGoesAway) {
        runTill({{u"--config"_s, u"away.toml"_s, u"queue"_s, u"deliver"_s}, {}}, nullptr);
    }
    QStringList commands;
    const int suspended =
        flow.passesSuspended
            ? int(passing::suspendedAnywhere(path(tillFile), path(storeFile)).size())
            : CheckCount::read(path(tillFile)).suspended;
    for (int i = suspended; i > 0; --i) {
        commands << u"restore last"_s << u"close"_s;
    }
    commands << u"wait 30"_s << u"quit"_s;
    const QString config = flow.hasStore ? u"store.toml"_s : u"orva.toml"_s;
    const auto till = runTill({{u"--config"_s, config, u"work"_s}, commands}, nullptr);
    Cashier cashier;
    cashier.read(commands, till->output());
    problems += cashier.refusals();
    if (till->exitCode() != 0) {
        problems += u"the till does not start again: %1"_s.arg(till->errors());
    }
    if (flow.hasStore) {
        giveBack(problems);
        deliverStore(problems);
    }
    if (flow.sellsSilent) {
        lookForSilent(problems);
    }
}

Outcome Scene::play(const Flow& flow, const QString& preparedFolder, const Stop& stop)
{
    copyFolder(preparedFolder, folder);
    passwordChanged = flow.passwordChanges;
    startServer(stop.actor == Actor::Server ? &stop : nullptr);
    CheckCount before;
    if (QFile::exists(path(tillFile))) {
        moveQueue(path(tillFile), nowhere, port);
        before = countChecks(path(tillFile));
    }
    writeConfig(passwordChanged ? u"new secret"_s : u"secret"_s);
    Outcome outcome;
    Cashier cashier;
    playRuns(flow, stop, cashier);
    if (stop.call == 0) {
        outcome.problems += cashier.refusals();
    }

    CheckCount after = CheckCount::read(path(tillFile));
    if (flow.passesSuspended) {
        after.suspended = int(passing::suspendedAnywhere(path(tillFile), path(storeFile)).size());
        outcome.problems += passing::heldTwice(path(tillFile), path(storeFile));
    }
    if (const QString complaint = cashier.complaint(before, after); !complaint.isEmpty()) {
        outcome.problems += complaint;
    }
    goThroughCopies(flow, stop.call != 0, before.closed, outcome.problems);
    recover(flow, outcome.problems);
    server->terminate();
    const Difference difference = Difference::between(path(tillFile), path(serverFile));
    if (!difference.isNone()) {
        outcome.problems += difference.text();
    }
    readRecord(path(recordFile), outcome);
    if (QFile trace(path(traceFile)); stop.call == 0 && trace.open(QFile::ReadOnly)) {
        outcome.trace = QString::fromUtf8(trace.readAll()).split(u'\n', Qt::SkipEmptyParts);
    }
    return outcome;
}
