// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordfolder.h"

#include "host/services/config.h"
#include "host/services/currenttime.h"
#include "till/failure.h"
#include "till/reason.h"
#include "till/text.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

constexpr qint64 bytesOfMegabyte = 1024LL * 1024;
constexpr QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

/// More than a till writes in its life; a greater number is somebody else's.
constexpr int greatestNumber = 999'999'999;

QString nameOf(int number)
{
    return u"%1.jsonl"_s.arg(number, 6, 10, QLatin1Char('0'));
}

QString fileName(const QString& folder, int number)
{
    return folder + u'/' + nameOf(number);
}

[[noreturn]] void fail(const QFile& file, const QString& reason)
{
    throw Failure(Text::tr("%1 cannot be written (%2)").arg(file.fileName(), reason));
}

} // namespace

std::unique_ptr<RecordFolder> RecordFolder::configured(const Config& config)
{
    const QString folder = config.getString(u"recording:folder"_s, QString());
    if (folder.isEmpty()) {
        return nullptr;
    }
    Bounds bounds;
    bounds.bytes = config.getInt(u"recording:maxMegabytes"_s, defaultMegabytes) * bytesOfMegabyte;
    bounds.days = config.getInt(u"recording:maxDays"_s, defaultDays);
    return std::make_unique<RecordFolder>(folder, bounds);
}

bool RecordFile::isRecord() const
{
    constexpr qint64 longestHeader = 64LL * 1024;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QJsonObject line = QJsonDocument::fromJson(file.readLine(longestHeader)).object();
    return Record::isOfTill(line) && line.value("number"_L1).toInt() == number;
}

QList<RecordFile> RecordFolder::records() const
{
    QList<RecordFile> found = files();
    found.removeIf([](const RecordFile& entry) { return !entry.isRecord(); });
    return found;
}

QList<RecordFile> RecordFolder::files() const
{
    QList<RecordFile> found;
    const auto entries = QDir(path).entryInfoList({u"*.jsonl"_s}, QDir::Files | QDir::NoSymLinks);
    for (const QFileInfo& entry : entries) {
        const int number = entry.completeBaseName().toInt(); // 0 for what is none
        if (number > 0 && number <= greatestNumber && entry.fileName() == nameOf(number)) {
            found.append({number, entry.filePath(), entry.size(), entry.lastModified()});
        }
    }
    std::sort(found.begin(), found.end(), [](const RecordFile& left, const RecordFile& right) {
        return left.number < right.number;
    });
    return found;
}

Record RecordFolder::read(int number) const
{
    const QList<RecordFile> all = files();
    for (const RecordFile& entry : all) {
        if (entry.number != number) {
            continue;
        }
        const QList<Record> records = Record::read(entry.path);
        if (!records.isEmpty()) {
            return records.first();
        }
    }
    throw Failure(
        Text::tr("There is no record %1 in %2; look at \"log list\".").arg(number).arg(path));
}

void RecordFolder::begin(QJsonObject header)
{
    file.reset();
    makeFolder();
    look();
    removeOld();
    openNext();
    header.insert(u"number"_s, known.last().number);
    add(header);
}

void RecordFolder::take(const QByteArray& lines)
{
    makeFolder();
    const QByteArray head = lines.first(std::max<qsizetype>(0, lines.indexOf('\n')));
    const int number = QJsonDocument::fromJson(head).object().value("number"_L1).toInt();
    QFile taken(fileName(path, number));
    if (number <= 0 || number > greatestNumber ||
        !taken.open(QIODevice::WriteOnly | QIODevice::NewOnly, ownerOnly) ||
        taken.write(lines) != lines.size() || !taken.flush()) {
        fail(taken, reasonOf(taken));
    }
}

void RecordFolder::makeFolder() const
{
    if (QFileInfo(path).isDir()) {
        return;
    }
    if (!QDir().mkpath(path)) {
        throw Failure(Text::tr("the folder %1 cannot be made").arg(path));
    }
    QFile::setPermissions(path, ownerOnly | QFile::ExeOwner);
}

/// Looks at the whole folder; a busy till need not do so for every check.
void RecordFolder::look()
{
    constexpr qint64 longEnough = 60'000;
    if (lastLook.isValid() && !lastLook.hasExpired(longEnough)) {
        return;
    }
    lastLook.start();
    known = records();
    total = 0;
    for (const RecordFile& entry : std::as_const(known)) {
        total += entry.bytes;
    }
}

void RecordFolder::removeOld()
{
    const QDateTime oldest =
        MockFactory<CurrentTime>::create()->currentDateTime().addDays(-bounds.days);
    while (!known.isEmpty() && known.first().changed < oldest) {
        removeOldest();
    }
}

void RecordFolder::removeOldest()
{
    const RecordFile oldest = known.takeFirst();
    total -= oldest.bytes;
    if (oldest.isRecord()) { // another one may have taken its place since the last look
        QFile::remove(oldest.path);
    }
}

void RecordFolder::openNext()
{
    int number = known.isEmpty() ? 1 : known.last().number + 1;
    // other tills may have taken the next numbers
    const int end = std::min(number + 10'000, greatestNumber + 1);
    for (; number < end; ++number) {
        file = std::make_unique<QFile>(fileName(path, number));
        if (file->open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                       ownerOnly)) {
            known.append({number, file->fileName(), 0, QDateTime::currentDateTime()});
            return;
        }
        if (!QFileInfo::exists(file->fileName())) {
            break;
        }
    }
    lastLook.invalidate();
    const std::unique_ptr<QFile> refused = std::move(file);
    if (refused == nullptr) {
        throw Failure(Text::tr("no number is left in %1; move its records elsewhere").arg(path));
    }
    fail(*refused, reasonOf(*refused));
}

void RecordFolder::add(const QJsonObject& line)
{
    if (file == nullptr) {
        return;
    }
    const QByteArray bytes = Record::lineOf(line);
    makeRoom(bytes.size());
    const qint64 before = file->pos();
    if (file->write(bytes) != bytes.size()) {
        const QString reason = reasonOf(*file); // resizing forgets it
        file->resize(before);                   // half a line helps nobody
        const std::unique_ptr<QFile> broken = std::move(file);
        fail(*broken, reason);
    }
    total += bytes.size();
    known.last().bytes += bytes.size();
}

/// Removes the oldest records until there is room for so many bytes.
void RecordFolder::makeRoom(qint64 wanted)
{
    while (total + wanted > bounds.bytes && known.size() > 1) {
        removeOldest();
    }
    if (total + wanted > bounds.bytes) {
        const std::unique_ptr<QFile> full = std::move(file);
        throw Failure(Text::tr("one record alone is larger than recording.maxMegabytes"));
    }
}

} // namespace till
