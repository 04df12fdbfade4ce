// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/archivecommand.h"

#include "host/database/database.h"
#include "till/archive/checkarchive.h"
#include "till/checks/checkarchiving.h"
#include "till/commands/workplace.h"
#include "till/failure.h"
#include "till/options.h"
#include "till/screen/output.h"
#include "till/screen/table.h"
#include "till/text.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>

using namespace Qt::StringLiterals;

namespace till {

ExitCode ArchiveCommand::run()
{
    const int moved = moveAll();
    if (options.compact) {
        compact();
    }
    print(moved);
    return ExitCode::Ok;
}

int ArchiveCommand::moveAll()
{
    CheckArchiving archiving(workplace.database(), workplace.keepChecksDays());
    if (!archiving.isMine()) {
        throw Failure(Text::tr("Another process works on the archive of %1; wait until it has "
                               "ended.")
                          .arg(workplace.database().fileName()));
    }
    int moved = 0;
    for (bool isBusy = true; isBusy;) {
        QElapsedTimer time;
        time.start();
        const int now = archiving.step();
        isBusy = archiving.giveBackPages() || now > 0;
        moved += now;
        QThread::msleep(static_cast<unsigned long>(time.elapsed())); // for those who sell
    }
    return moved;
}

void ArchiveCommand::compact()
{
    if (!workplace.database().forgetDeleted()) {
        errors.notes({Text::tr("%1 is in use; its log stays as large as it is until everybody has "
                               "closed it.")
                          .arg(workplace.database().fileName())});
    }
}

void ArchiveCommand::print(int moved)
{
    const QList<CheckArchive::Month> months = CheckArchive(workplace.database()).months();
    if (options.json) {
        QJsonArray array;
        for (const CheckArchive::Month& month : months) {
            array.append(QJsonObject{{u"month"_s, month.month},
                                     {u"checks"_s, month.checks},
                                     {u"bytes"_s, month.length}});
        }
        const QJsonObject object{{u"moved"_s, moved}, {u"months"_s, array}};
        out.write(QString::fromUtf8(QJsonDocument(object).toJson()));
        return;
    }
    out.done(Text::tr("Checks that went into the archive: %1.").arg(moved));
    if (months.isEmpty()) {
        return;
    }
    Table table({{Text::tr("Month")},
                 {Text::tr("Checks"), Table::Align::Right},
                 {Text::tr("Bytes"), Table::Align::Right}});
    for (const CheckArchive::Month& month : months) {
        table.addRow({month.month, QString::number(month.checks), QString::number(month.length)});
    }
    out.write(table.text(out.columns()));
}

} // namespace till
