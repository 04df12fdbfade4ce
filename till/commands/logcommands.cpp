// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/logcommands.h"

#include "console/printable.h"
#include "till/commands/caseexport.h"
#include "till/commands/workplace.h"
#include "till/failure.h"
#include "till/recording/logview.h"
#include "till/recording/recordcomparison.h"
#include "till/recording/recordfolder.h"
#include "till/recording/recording.h"
#include "till/recording/replay.h"
#include "till/screen/checkview.h"
#include "till/screen/output.h"
#include "till/screen/progress.h"
#include "till/support/supportarchive.h"
#include "till/support/wholefile.h"
#include "till/text.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// The number before and the one behind the point of "3.2"; 0 where there is none.
std::pair<int, int> numbersIn(const QString& text)
{
    return {text.section(u'.', 0, 0).toInt(), text.section(u'.', 1, 1).toInt()};
}

/// The records of an exported file or a support archive.
QList<Record> recordsOf(const QString& fileName)
{
    return SupportArchive::isLikeOne(fileName)
               ? Record::parse(SupportArchive::read(fileName).content(supportfiles::records),
                               fileName)
               : Record::read(fileName);
}

void requireSome(const QList<Record>& records)
{
    if (records.isEmpty()) {
        throw Failure(Text::tr("There are no records."));
    }
}

/// What is shown is sent on to others; the card is its owner's.
void hideCard(const QString& card, QList<RecordDifference>& differences)
{
    if (card.isEmpty()) {
        return;
    }
    for (RecordDifference& difference : differences) {
        difference.recorded.replace(card, checkview::shortCard(card));
        difference.replayed.replace(card, checkview::shortCard(card));
    }
}

QString replayText(const Record& record, const QList<RecordDifference>& differences,
                   const QString& build)
{
    const auto calls = record.calls.size();
    const auto sent = logview::sentIn(record).size();
    QString what = Text::tr("Record %1, %2: ").arg(record.number()).arg(logview::title(record));
    if (record.header.value(u"pluginBuild"_s).toString() != build) {
        what += Text::tr("another build of the plug-in: ");
    }
    if (record.cut) {
        what += Text::tr("cut off, replayed as far as it goes: ");
    }
    if (differences.isEmpty()) {
        return what + Text::tr("%n calls, %1 sent, identical.\n", nullptr, int(calls)).arg(sent);
    }
    QString text = what + Text::tr("%1 of %2 calls differ.\n").arg(differences.size()).arg(calls);
    for (const RecordDifference& difference : differences) {
        text += u"  "_s + console::printable::line(difference.text()) + u'\n';
    }
    return text;
}

QJsonObject replayJson(const Record& record, const QList<RecordDifference>& differences,
                       const QString& build)
{
    QJsonArray array;
    for (const RecordDifference& difference : differences) {
        array.append(difference.json());
    }
    return {{u"record"_s, record.number()},
            {u"check"_s, record.checkId()},
            {u"calls"_s, record.calls.size()},
            {u"sameBuild"_s, record.header.value(u"pluginBuild"_s).toString() == build},
            {u"sent"_s, logview::sentIn(record).size()},
            {u"differences"_s, array}};
}

} // namespace

LogCommands::LogCommands(const Options& given, Output& output, Output& errorOutput)
    : options(given), out(output), errors(errorOutput), config(loadConfig(given)),
      folder(RecordFolder::configured(config))
{
    errorOutput.notes(noticesOf(config));
}

LogCommands::~LogCommands() = default;

ExitCode LogCommands::run()
{
    switch (options.command) {
    case Command::LogShow:
        return show();
    case Command::LogExport:
        return exportTo();
    case Command::LogReplay:
        return replay();
    default:
        return list();
    }
}

const RecordFolder& LogCommands::requireFolder() const
{
    if (folder == nullptr) {
        throw Failure(Text::tr("Nothing is recorded; write folder in [recording] of %1, or name a "
                               "file that was exported.")
                          .arg(options.configFile),
                      ExitCode::Usage);
    }
    return *folder;
}

QList<Record> LogCommands::chosen() const
{
    if (!options.file.isEmpty()) {
        const QList<Record> all = recordsOf(options.file);
        const int wanted = numbersIn(options.record).first;
        QList<Record> found;
        for (const Record& record : all) {
            if (wanted == 0 || record.number() == wanted) {
                found.append(record);
            }
        }
        return found;
    }
    if (options.record.isEmpty() || options.record == u"all"_s) {
        return allReadable();
    }
    const int number = numbersIn(options.record).first;
    return number > 0 ? QList<Record>{requireFolder().read(number)} : recordsOf(options.record);
}

QList<Record> LogCommands::allReadable() const
{
    QList<Record> records;
    const QList<RecordFile> files = requireFolder().files();
    for (const RecordFile& file : files) {
        try {
            records += Record::read(file.path);
        } catch (const Failure& failure) {
            errors.notes({failure.text()}); // the others are none the worse for it
        }
    }
    return records;
}

ExitCode LogCommands::list()
{
    const QList<Record> records = chosen();
    if (options.json) {
        out.write(logview::json(records));
    } else if (records.isEmpty()) {
        out.line(Text::tr("There are no records."));
    } else {
        out.write(logview::table(records));
    }
    return ExitCode::Ok;
}

ExitCode LogCommands::show()
{
    const QList<Record> records = chosen();
    requireSome(records);
    const int only = numbersIn(options.record).second;
    for (const Record& record : records) {
        if (only > logview::sentIn(record).size()) {
            throw Failure(Text::tr("Record %1 has no exchange %2; look at \"log list\".")
                              .arg(record.number())
                              .arg(only));
        }
        out.write(logview::text(record, only));
    }
    return ExitCode::Ok;
}

ExitCode LogCommands::exportTo()
{
    if (options.asPage) {
        return CaseExport(config, requireFolder(), options, out, errors).run();
    }
    QByteArray content;
    int count = 0;
    const int wanted = numbersIn(options.record).first;
    const QList<RecordFile> files = requireFolder().records();
    for (const RecordFile& file : files) {
        if (options.record == u"all"_s || file.number == wanted) {
            const QByteArray record = Record::handedOn(file.path);
            content += record;
            count += record.isEmpty() ? 0 : 1;
        }
    }
    if (count == 0) {
        throw Failure(Text::tr("There is no record %1 in %2; look at \"log list\".")
                          .arg(options.record, folder->name()));
    }
    wholefile::create(options.target, content);
    out.line(Text::tr("%n records are in %1. It holds whole card numbers: hand it on with care.",
                      nullptr, int(count))
                 .arg(options.target));
    return ExitCode::Ok;
}

ExitCode LogCommands::replay()
{
    const QList<Record> records = chosen();
    requireSome(records);
    const QString plugin = pluginFile(options, config);
    const QString build = Recording::buildOf(plugin);
    const Replay replay(plugin);
    bool identical = true;
    QJsonArray array;
    Progress progress(errors, Text::tr("Replaying"));
    qsizetype done = 0;
    for (const Record& record : records) {
        auto differences = recordcomparison::differences(record, replay.run(record));
        hideCard(record.cardNumber(), differences);
        identical = identical && differences.isEmpty();
        if (options.json) {
            array.append(replayJson(record, differences, build));
        } else {
            progress.clear();
            out.write(replayText(record, differences, build));
        }
        if (records.size() > 1) { // one by itself is told by its result
            progress.show(++done, records.size());
        }
    }
    progress.clear();
    if (options.json) {
        out.write(QString::fromUtf8(QJsonDocument(array).toJson()));
    }
    return identical ? ExitCode::Ok : ExitCode::Differs;
}

} // namespace till
