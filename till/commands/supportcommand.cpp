// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/supportcommand.h"

#include "console/queue/queueview.h"
#include "host/database/database.h"
#include "host/queue/outgoingqueue.h"
#include "till/checks/checkcodec.h"
#include "till/checks/checkstore.h"
#include "till/commands/caseexport.h"
#include "till/commands/examination.h"
#include "till/doctor/doctor.h"
#include "till/doctor/libraryconfig.h"
#include "till/failure.h"
#include "till/person/personincheck.h"
#include "till/reason.h"
#include "till/recording/recordfolder.h"
#include "till/screen/checkjson.h"
#include "till/screen/jsonlist.h"
#include "till/screen/output.h"
#include "till/screen/table.h"
#include "till/support/safeconfig.h"
#include "till/support/wholefile.h"
#include "till/text.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// The newest ones tell what the till does; what is older is on the till.
constexpr int listedChecks = 1000;

constexpr int configMilliseconds = 500;
/// Each is replayed, which takes its time.
constexpr qsizetype mostPages = 20;

/// The end of a file, from a line's beginning.
QByteArray endOf(QFile& file, qint64 most)
{
    const qint64 skipped = std::max<qint64>(0, file.size() - most);
    file.seek(skipped);
    const QByteArray content = file.read(most);
    return skipped == 0 ? content : content.sliced(content.indexOf('\n') + 1);
}

QString aboutOf(const QString& name)
{
    const QString folder = name.section(u'/', 0, -2);
    return name == supportfiles::config            ? Text::tr("configuration without secrets")
           : name == supportfiles::doctorJson      ? Text::tr("the doctor's report, for programs")
           : name == supportfiles::doctorText      ? Text::tr("the doctor's report")
           : name == supportfiles::queue           ? Text::tr("list of the queue")
           : name == supportfiles::checks          ? Text::tr("list of the checks")
           : name == supportfiles::records         ? Text::tr("records")
           : folder == supportfiles::checkFolder   ? Text::tr("a check")
           : folder == supportfiles::messageFolder ? Text::tr("its confirmation")
           : folder == supportfiles::caseFolder    ? Text::tr("a record as a page")
                                                   : Text::tr("end of a log");
}

} // namespace

SupportCommand::SupportCommand(const Options& given, Output& output, Output& errorOutput)
    : options(given), out(output), errors(errorOutput), subject(examination::subjectOf(given)),
      content(given.withCards)
{}

SupportCommand::~SupportCommand() = default;

ExitCode SupportCommand::run()
{
    if (QFileInfo::exists(options.target)) { // said before anybody waits for the rest
        throw Failure(Text::tr("%1 is there already; name a new file.").arg(options.target));
    }
    subject.read(configMilliseconds);
    records = RecordFolder::configured(*subject.config);
    content.addText(supportfiles::config, safeConfig(*subject.config));
    addReport();
    openDatabase();
    addLists();
    addWantedRecords();
    addWantedChecks();
    addPages();
    addLogs();
    const SupportArchive archive = content.archive();
    const QByteArray bytes = archive.written();
    if (bytes.size() > SupportArchive::largest) {
        throw Failure(Text::tr("It would have more than %1 bytes, and nobody could read it; name "
                               "fewer records.")
                          .arg(SupportArchive::largest));
    }
    list(archive, bytes.size());
    wholefile::create(options.target, bytes);
    if (!options.json) {
        out.done(options.withCards
                     ? Text::tr("Written: %1. It holds whole card numbers: hand it on with care.")
                           .arg(options.target)
                     : Text::tr("Written: %1.").arg(options.target));
    }
    if (leftSomethingBehind) {
        // the usual end would wait for locks of the loader that a hanging plug-in holds
        std::_Exit(int(errors.tellTrouble(out, ExitCode::Ok)));
    }
    return ExitCode::Ok;
}

void SupportCommand::addReport()
{
    examination::WithoutLog withoutLog(options.verbose);
    doctor::Doctor doctor(subject);
    const doctor::Report report = doctor.examine();
    leftSomethingBehind = doctor.leftSomethingBehind();
    if (leftSomethingBehind) {
        withoutLog.stay();
    }
    content.addText(supportfiles::doctorText, report.text().toUtf8());
    content.addText(supportfiles::doctorJson, report.json().toUtf8());
}

/// Makes none: whose till has no database has the report to say so.
void SupportCommand::openDatabase()
{
    const QString file = subject.databaseFile();
    if (!QFileInfo::exists(file)) {
        errors.notes({Text::tr("There is no database; lists and checks are left out.")});
        return;
    }
    try {
        database = QSharedPointer<poshost::Database>::create(file);
        checks = std::make_unique<CheckStore>(database);
    } catch (const std::exception& error) {
        errors.notes({Text::tr("The lists are left out (%1).").arg(reasonOf(error))});
    }
}

void SupportCommand::addLists()
{
    if (checks == nullptr) {
        return;
    }
    content.addText(
        supportfiles::queue,
        console::queueview::json(poshost::OutgoingQueue(*database).list(true)).toUtf8());
    // the oldest first: whoever reads the archive takes them up in this order
    const QList<CheckRow> newest = checks->list(listedChecks);
    QByteArray list;
    JsonList json([&list](const QString& part) { list += part.toUtf8(); });
    std::for_each(newest.crbegin(), newest.crend(),
                  [&json](const CheckRow& row) { json.add(checkjson::object(row)); });
    json.end();
    content.addText(supportfiles::checks, list);
    checks->forEachStored([this](const StoredCheck& stored) {
        try {
            content.addPeople(personincheck::of(checkcodec::decode(stored.data, stored.id)));
        } catch (const Failure&) {
            // the doctor's report says that it is damaged
        }
    });
}

void SupportCommand::addLogs()
{
    constexpr qint64 enough = 1024LL * 1024;
    const QStringList targets = doctor::LibraryConfig::find().targets;
    for (const QString& target : targets) {
        QFile file(target);
        if (QFileInfo(target).isFile() && file.open(QIODevice::ReadOnly)) {
            content.addLog(endOf(file, enough));
        }
    }
}

void SupportCommand::addRecord(const RecordFile& file, const QByteArray& lines)
{
    if (!added.contains(file.number)) {
        added.insert(file.number);
        content.addRecord(lines);
    }
}

/// The newest of the records as pages. What a replay logs is for nobody here.
void SupportCommand::addPages()
{
    QList<int> numbers = added.values();
    std::sort(numbers.begin(), numbers.end());
    const examination::WithoutLog withoutLog(options.verbose || leftSomethingBehind);
    for (const int number : numbers.last(std::min(numbers.size(), mostPages))) {
        try {
            content.addPage(number, CaseExport(*subject.config, *records, options, out, errors)
                                        .pageOf(QString::number(number), !leftSomethingBehind));
        } catch (const Failure& failure) {
            errors.notes({Text::tr("Record %1 has no page (%2).").arg(number).arg(failure.text())});
        }
    }
}

void SupportCommand::addWantedRecords()
{
    if (options.record.isEmpty()) {
        return;
    }
    QStringList wanted = options.record.split(u',', Qt::SkipEmptyParts);
    const QList<RecordFile> files = records == nullptr ? QList<RecordFile>() : records->records();
    for (const RecordFile& file : files) {
        const QString number = QString::number(file.number);
        if (options.record != u"all"_s && !wanted.contains(number)) {
            continue;
        }
        wanted.removeAll(number);
        addRecord(file, Record::handedOn(file.path));
        if (checks != nullptr) {
            const Record record = records->read(file.number);
            try {
                addWithRelated(record.checkId());
            } catch (const Failure&) {
                // never closed, or on another till: its record tells of it all the same
            }
        }
    }
    if (options.record != u"all"_s && !wanted.isEmpty()) {
        throw Failure(
            Text::tr("There is no record %1; look at \"log list\".").arg(wanted.join(u", "_s)),
            ExitCode::Usage);
    }
}

void SupportCommand::addWantedChecks()
{
    if (options.wantedChecks.isEmpty()) {
        return;
    }
    if (checks == nullptr) {
        throw Failure(Text::tr("There are no checks to be had from this till."));
    }
    for (const QString& which : options.wantedChecks) {
        addWithRelated(which);
    }
}

/// A check with what explains it: its records, and for a return its sale and the others of it.
void SupportCommand::addWithRelated(const QString& which)
{
    const Check check = checks->findClosed(which);
    addCheck(check);
    addRecordsOf(check.id());
    if (check.isReturn()) {
        const Check sale = checks->findSale(check.document->getSaleDocumentId());
        addCheck(sale);
        addRecordsOf(sale.id());
        const QList<Check> returns = checks->returnsOf(sale.id());
        for (const Check& other : returns) {
            addCheck(other);
        }
    }
}

void SupportCommand::addCheck(const Check& check)
{
    const auto message = checks->messageOf(check.id());
    const auto queued = message ? poshost::OutgoingQueue(*database).show(*message) : std::nullopt;
    content.addCheck(check, queued ? queued->payload : QString());
}

void SupportCommand::addRecordsOf(const QString& check)
{
    const QList<RecordFile> files = records == nullptr ? QList<RecordFile>() : records->records();
    for (const RecordFile& file : files) {
        if (added.contains(file.number)) {
            continue;
        }
        const QByteArray lines = Record::handedOn(file.path);
        if (lines.contains(check.toUtf8()) && records->read(file.number).checkId() == check) {
            addRecord(file, lines);
        }
    }
}

void SupportCommand::list(const SupportArchive& archive, qsizetype bytes)
{
    if (options.json) {
        QJsonArray files;
        for (const TarMember& member : archive.members) {
            files.append(
                QJsonObject{{u"name"_s, member.name}, {u"bytes"_s, member.content.size()}});
        }
        const QJsonObject object{{u"file"_s, options.target},
                                 {u"bytes"_s, bytes},
                                 {u"masked"_s, !options.withCards},
                                 {u"files"_s, files}};
        out.write(QString::fromUtf8(QJsonDocument(object).toJson()));
        return;
    }
    Table table({{Text::tr("File")}, {Text::tr("Bytes"), Table::Align::Right}, {Text::tr("What")}});
    for (const TarMember& member : archive.members) {
        table.addRow({member.name, QString::number(member.content.size()), aboutOf(member.name)});
    }
    out.write(table.text());
    out.line(options.withCards ? Text::tr("Card numbers and names are in it.")
                               : Text::tr("Card numbers and names are masked."));
}

} // namespace till
