// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/unit/till/doctor/scene.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace tests {

/// One way of breaking a sound set-up, and the one check that must find it.
struct Row
{
    const char* name;
    std::function<void(Scene&)> breakIt;
    QString found; ///< "check mark"
    /// The checks, or "group." of them, that cannot be done any more. All others say what they
    /// said.
    QStringList skipped = {};
    /// What somebody does where the mend is words; otherwise Scene::putRight.
    std::function<void(Scene&)> byHand = {};
    /// What is typed when the mend asks.
    std::function<QByteArray(const Scene&)> answers = {};
};

/// Rows about one thing.
struct Ways
{
    const char* name;
    std::function<QList<Row>()> rows;
    Scene::Way way = Scene::Way::Http;
};

QList<Ways> settingsWays();
QList<Ways> environmentWays();
QList<Ways> databaseWays();
QList<Ways> pluginWays();
QList<Ways> connectionWays();
QList<Ways> serverWays();

/// The groups behind a server that cannot be asked.
QStringList server();
/// The same with the way to it.
QStringList way();

/// The same with what is said of the plug-in's keys, where there is no sheet beside it.
QStringList behindTheSheet();

/// How the rows were mended.
struct Mended
{
    int byCommand = 0;
    int byLine = 0;
    int byHand = 0;
};

/// Breaks a fresh scene for each row and compares what the doctor says before and after; then does
/// what is printed below the one check, exactly as it stands there, after which everything must be
/// as before.
Mended expectFoundAndMended(const QList<Row>& rows, Scene::Way way);

} // namespace tests
