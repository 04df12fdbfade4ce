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
};

/// The groups behind a server that cannot be asked.
QStringList server();
/// The same with the way to it.
QStringList way();

/// The same with what is said of the plug-in's keys, where there is no sheet beside it.
QStringList behindTheSheet();

/// Breaks a fresh scene for each row and compares what the doctor says before and after.
void expectFound(const QList<Row>& rows, Scene::Way way = Scene::Way::Http);

} // namespace tests
