// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/caseexport.h"

#include "console/language.h"
#include "host/database/database.h"
#include "host/queue/outgoingqueue.h"
#include "host/services/config.h"
#include "till/checks/checkstore.h"
#include "till/commands/workplace.h"
#include "till/explain/checkexplainer.h"
#include "till/failure.h"
#include "till/person/personincheck.h"
#include "till/person/personinrecord.h"
#include "till/person/personmask.h"
#include "till/reason.h"
#include "till/recording/recordfolder.h"
#include "till/recording/replay.h"
#include "till/screen/output.h"
#include "till/support/wholefile.h"
#include "till/text.h"

#include <QFileInfo>
#include <QSharedPointer>

using namespace Qt::StringLiterals;

namespace till {

ExitCode CaseExport::run()
{
    const QByteArray content = pageOf(options.record, true);
    if (!leftOut.isEmpty()) {
        errors.notes({leftOut});
    }
    wholefile::create(options.target, content);
    out.line(
        options.withCards
            ? Text::tr("The page is %1. It holds whole card numbers: hand it on with care.")
                  .arg(options.target)
            : Text::tr("The page is %1. Card numbers and names are masked.").arg(options.target));
    return ExitCode::Ok;
}

QByteArray CaseExport::pageOf(const QString& record, bool mayReplay)
{
    takeRecord(record);
    takeFromDatabase();
    if (mayReplay) {
        replay(record);
    } else {
        material.notReplayed = Text::tr("The plug-in does not answer.");
    }
    return page();
}

void CaseExport::takeRecord(const QString& number)
{
    bool isNumber = false;
    const int wanted = number.toInt(&isNumber);
    if (!isNumber) {
        throw Failure(
            Text::tr("A page shows one record; name its number instead of \"%1\".").arg(number),
            ExitCode::Usage);
    }
    const QList<RecordFile> files = records.records();
    for (const RecordFile& file : files) {
        if (file.number == wanted) {
            lines = Record::handedOn(file.path);
            const QList<Record> read = Record::parse(lines, file.path);
            if (!read.isEmpty()) {
                material.record = read.first();
                people.add(personinrecord::of(lines));
                return;
            }
        }
    }
    throw Failure(
        Text::tr("There is no record %1 in %2; look at \"log list\".").arg(number, records.name()));
}

/// Makes none.
void CaseExport::takeFromDatabase()
{
    const QString file = options.database.isEmpty()
                             ? config.getString(u"till:database"_s, QString())
                             : options.database;
    if (!QFileInfo::exists(file)) {
        return;
    }
    try {
        const auto database = QSharedPointer<poshost::Database>::create(file);
        CheckStore checks(database);
        takeCheck(checks, *database);
    } catch (const std::exception& error) {
        leftOut = Text::tr("Check and queue are left out (%1).").arg(reasonOf(error));
    }
}

void CaseExport::takeCheck(CheckStore& checks, poshost::Database& database)
{
    try {
        material.check = checks.findClosed(material.record.checkId());
    } catch (const Failure&) {
        return; // never closed, or on another till: its record tells of it all the same
    }
    people.add(personincheck::of(*material.check));
    try {
        material.explanation =
            CheckExplainer(checks, database, &records, options.configFile).explain(*material.check);
        people.names += namesInMarkup(QString::fromUtf8(material.explanation.exchange.answer));
    } catch (const Failure& failure) {
        material.unexplained = failure.text();
    }
    if (const auto number = checks.messageOf(material.check->id())) {
        material.message = poshost::OutgoingQueue(database).show(*number);
    }
    if (material.message) {
        people.names += namesInMarkup(material.message->payload);
        people.names += namesInMarkup(material.message->lastAnswer);
    }
}

void CaseExport::replay(const QString& number)
{
    // a difference is cut to a few characters: no mask would find half of a name in it
    const QByteArray replayed =
        options.withCards ? lines : personinrecord::masked(lines, PersonMask(people));
    try {
        const Record record = Record::parse(replayed, number).constFirst();
        const QList<Record> again = Replay(pluginFile(options, config)).run(record);
        material.differences = recordcomparison::differences(record, again);
    } catch (const std::exception& error) {
        material.notReplayed = reasonOf(error);
    }
}

QByteArray CaseExport::page() const
{
    if (options.withCards) {
        return casereport::html(material, {}, console::spokenLanguage());
    }
    // markup that stands as a text is both: references hide names in the one, tags in the other
    const PersonMask mask(people);
    return casereport::html(
        material, [&mask](const QString& text) { return mask.plainMasked(mask.masked(text)); },
        console::spokenLanguage());
}

} // namespace till
