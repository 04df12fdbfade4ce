// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What has to be true of a copy of the books, and of books that were made of one.

#include "tests/scenario/crash/scene.h"
#include "tests/support/cashier.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using tests::CheckCount;

namespace {

const QString copyFile = QStringLiteral("copy.orva");
const QString provedFile = QStringLiteral("proved.sqlite");

} // namespace

void Scene::goThroughCopies(const Flow& flow, bool wasStopped, int closed, QStringList& problems)
{
    if (flow.copying == Copying::Backup) {
        proveCopy(wasStopped, closed, problems);
    } else if (flow.copying == Copying::Restore) {
        restoreAgain(closed, problems);
        proveCopy(false, closed, problems);
    }
}

/// A copy that has its name can be restored, and holds everything.
void Scene::proveCopy(bool wasStopped, int closed, QStringList& problems)
{
    if (!QFile::exists(path(copyFile))) {
        if (!wasStopped) {
            problems += u"there is no copy"_s;
        }
        const auto again = runTill({{u"backup"_s, copyFile}, {}}, nullptr);
        if (again->exitCode() != 0) {
            problems += u"no copy can be made any more: %1"_s.arg(again->errors());
            return;
        }
    }
    const auto till = runTill({{u"--database"_s, provedFile, u"restore"_s, copyFile}, {}}, nullptr);
    if (till->exitCode() != 0) {
        problems += u"the copy cannot be restored: %1"_s.arg(till->errors());
        return;
    }
    if (const int held = CheckCount::read(path(provedFile)).closed; held != closed) {
        problems += u"the copy holds %1 closed checks of %2"_s.arg(held).arg(closed);
    }
}

/// Whoever finds that it was stopped restores once more; what was there before is kept whole.
void Scene::restoreAgain(int closed, QStringList& problems)
{
    const auto till = runTill({{u"restore"_s, copyFile}, {}}, nullptr);
    if (till->exitCode() != 0) {
        problems += u"it cannot be restored any more: %1"_s.arg(till->errors());
        return;
    }
    const QStringList kept = QDir(folder)
                                 .entryList({u"till.sqlite.before-restore*"_s}, QDir::Files)
                                 .filter(QRegularExpression(u"(restore|restore-\\d+)$"_s));
    if (kept.isEmpty()) {
        problems += u"what was there before is not kept"_s;
    }
    for (const QString& name : kept) {
        if (const int held = CheckCount::read(path(name)).closed; held != closed) {
            problems += u"%1 holds %2 closed checks of %3"_s.arg(name).arg(held).arg(closed);
        }
    }
}
