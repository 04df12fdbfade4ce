// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What loading the plug-in costs beside a plug-in without anything in it, and how large it is.

#include "bench/rows.h"
#include "bench/suites.h"
#include "bench/workplace.h"
#include "host/loyalty/basicloyaltysystem.h"

#include <QFileInfo>
#include <QPluginLoader>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr double moreThanEmpty = 5; ///< milliseconds
constexpr double milliseconds = 1e3;
constexpr double kibibyte = 1024;
constexpr double maxKibibytes = 400;

/// @return whether all steps succeeded; the library is unloaded afterwards
bool loadAndStart(double& time)
{
    QPluginLoader loader(QStringLiteral(ORVA_PLUGIN_FILE));
    loader.setLoadHints({}); // Qt would keep it in memory, and loading it again cost nothing
    BasicLoyaltySystem* system = nullptr;
    time += seconds(Clock::Wall, [&] {
        loader.load();
        system = qobject_cast<BasicLoyaltySystem*>(loader.instance());
        if (system != nullptr && !system->init()) {
            system = nullptr;
        }
    });
    if (system != nullptr) {
        system->deinit();
    }
    return loader.unload() && system != nullptr;
}

bool loadEmpty(double& time)
{
    QPluginLoader loader(QStringLiteral(ORVA_EMPTY_PLUGIN_FILE));
    loader.setLoadHints({});
    const QObject* instance = nullptr;
    time += seconds(Clock::Wall, [&] {
        loader.load();
        instance = loader.instance();
    });
    return loader.unload() && instance != nullptr;
}

/// The host has its own libraries loaded, so they are not part of this.
void measureLoading(benchmark::State& state)
{
    const Workplace workplace;
    double floorSum = 0;
    double subjectSum = 0;
    for ([[maybe_unused]] const auto turn : state) {
        double time = 0;
        if (!loadEmpty(floorSum) || !loadAndStart(time)) {
            state.SkipWithError("a plug-in does not load or unload");
            return;
        }
        subjectSum += time;
        state.SetIterationTime(time);
    }
    const auto turns = static_cast<double>(state.iterations());
    report(state, floorSum / turns, subjectSum / turns,
           (subjectSum - floorSum) / turns * milliseconds, {moreThanEmpty});
}

void measureSize(benchmark::State& state)
{
    for ([[maybe_unused]] const auto turn : state) {
        const QTemporaryDir folder;
        const QString stripped = folder.filePath(u"liborva.so"_s);
        if (QProcess::execute(u"strip"_s, {u"-o"_s, stripped, QStringLiteral(ORVA_PLUGIN_FILE)}) !=
            0) {
            state.SkipWithError("strip failed");
            return;
        }
        const auto size = static_cast<double>(QFileInfo(stripped).size()) / kibibyte;
        report(state, size, size, size, {.value = maxKibibytes, .isTime = false});
        state.SetIterationTime(1);
    }
}

} // namespace

void addLoadingRows()
{
    addRow("loading, ms over an empty plug-in", 20, measureLoading);
    addRow("stripped liborva.so, KiB", 1, measureSize)->Repetitions(2);
}

} // namespace bench
