// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/recordingchecks.h"

#include "till/doctor/report.h"
#include "till/doctor/shell.h"
#include "till/doctor/subject.h"
#include "till/text.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

/// The folder itself, or the nearest one above that is there.
QFileInfo nearestThere(const QString& folder)
{
    QFileInfo nearest(folder);
    while (!nearest.exists() && !nearest.isRoot()) {
        nearest = QFileInfo(nearest.absolutePath());
    }
    return nearest;
}

Finding lookAtRecording(const QString& folder)
{
    const QFileInfo there = nearestThere(folder);
    const QString path = there.absoluteFilePath();
    if (!there.isDir()) {
        return Finding::fails(Text::tr("%1 is no folder").arg(path),
                              Mend::words(Text::tr("name another folder under [recording]")));
    }
    if (there.isWritable() && there.isExecutable()) {
        return Finding::ok(folder);
    }
    const QString text = Text::tr("nothing can be written into %1").arg(path);
    return shell::isOwn(path)
               ? Finding::fails(text, Mend::command(shell::chmod(u"u+rwx"_s, {path})).safe())
               : Finding::fails(
                     text, Mend::words(Text::tr("%1 belongs to %2, the till runs as %3: "
                                                "give it a folder of its own")
                                           .arg(path, shell::ownerOf(path), shell::account())));
}

} // namespace

void checkRecording(Report& report, const Subject& subject)
{
    report.check(u"recording"_s, Text::tr("Records"), {u"config.recording.folder"_s}, [&] {
        const QString folder = subject.config->getString(u"recording:folder"_s, QString());
        return folder.isEmpty() ? Finding::notNeeded(Text::tr("nothing is recorded"))
                                : lookAtRecording(folder);
    });
}

} // namespace till::doctor
