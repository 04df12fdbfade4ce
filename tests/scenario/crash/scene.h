// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/crash/flow.h"
#include "tests/scenario/crash/process.h"
#include "tests/support/portreserve.h"

#include <memory>

namespace tests {
class Cashier;
}

/// The files that a scene runs.
struct Programs
{
    QString till;
    QString server;
    QString plugin;
    QString crashPoint; ///< the library that counts and stops
    QString store;      ///< the module of a store in a file
    /// Where a host library is looked for before the built one; empty for nowhere.
    QString hostFolder;
};

/// Who is stopped.
enum class Actor
{
    Till,
    Server
};

/// When and how. Call 0 is never reached.
struct Stop
{
    Actor actor = Actor::Till;
    quint64 call = 0;
    QString way = QStringLiteral("kill");
    quint64 seed = 0;
};

struct Outcome
{
    quint64 calls = 0;
    bool stopped = false;
    QString at;
    /// Every call, as in "3 pwrite ./till.sqlite-wal"; only of an undisturbed run.
    QStringList trace;
    QStringList problems;
};

/// One shop in one folder: a server, a till, and what is on their disks.
class Scene
{
public:
    Scene(const Programs& built, const QString& sceneFolder);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    /// Makes the folder what the flow begins with. @throws SceneError
    void prepare(const Flow& flow);
    /// Begins with a copy of a prepared folder, plays the flow with the stop in it, restarts what
    /// was stopped, drains the queue and compares the books. @throws SceneError when that cannot be
    /// done; what is wrong afterwards is in the outcome.
    Outcome play(const Flow& flow, const QString& preparedFolder, const Stop& stop);

private:
    QString path(const QString& name) const { return folder + u'/' + name; }
    QProcessEnvironment environment(const Stop* stop) const;
    void writeFile(const QString& name, const QString& text) const;
    void writeFiles(const Flow& flow) const;
    void writeConfig(const QString& password) const;
    void writeStoreConfigs(const QString& plain) const;
    void startServer(const Stop* stop);
    void keepServerUp();
    std::unique_ptr<Process> runTill(const TillRun& run, const Stop* stop);
    void playRuns(const Flow& flow, const Stop& stop, tests::Cashier& cashier);
    void recover(const Flow& flow, QStringList& problems);
    void giveBack(QStringList& problems);
    void lookForSilent(QStringList& problems);
    void deliverStore(QStringList& problems);
    void goThroughCopies(const Flow& flow, bool wasStopped, int closed, QStringList& problems);
    void proveCopy(bool wasStopped, int closed, QStringList& problems);
    void restoreAgain(int closed, QStringList& problems);

    const Programs& programs;
    const QString folder;
    std::unique_ptr<Process> server;
    /// Nobody else can take it while the server is stopped.
    const PortReserve reserve;
    const int port = reserve.port();
    bool passwordChanged = false;
};
