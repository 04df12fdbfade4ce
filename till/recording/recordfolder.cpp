// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordfolder.h"

#include "host/services/config.h"
#include "host/services/currenttime.h"
#include "till/failure.h"
#include "till/text.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

constexpr qint64 bytesOfMegabyte = 1024LL * 1024;
constexpr QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

QString fileName(const QString& folder, int number)
{
    return u"%1/%2.jsonl"_s.arg(folder).arg(number, 6, 10, QLatin1Char('0'));
}

[[noreturn]] void fail(const QFile& file)
{
    throw Failure(Text::tr("%1 cannot be written (%2)").arg(file.fileName(), file.errorString()));
}

} // namespace

std::unique_ptr<RecordFolder> RecordFolder::configured(const Config& config)
{
    const QString folder = config.getString(u"recording:folder"_s, QString());
    if (folder.isEmpty()) {
        return nullptr;
    }
    Bounds bounds;
    bounds.bytes = config.getInt(u"recording:maxMegabytes"_s, int(bounds.bytes / bytesOfMegabyte)) *
                   bytesOfMegabyte;
    bounds.days = config.getInt(u"recording:maxDays"_s, bounds.days);
    return std::make_unique<RecordFolder>(folder, bounds);
}

QList<RecordFile> RecordFolder::files() const
{
    QList<RecordFile> found;
    const auto entries = QDir(path).entryInfoList({u"*.jsonl"_s}, QDir::Files);
    for (const QFileInfo& entry : entries) {
        bool isNumber = false;
        const int number = entry.completeBaseName().toInt(&isNumber);
        if (isNumber && number > 0) {
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
    removeOld();
    openNext();
    header.insert(u"number"_s, current);
    add(header);
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

void RecordFolder::removeOld()
{
    const QDateTime oldest =
        MockFactory<CurrentTime>::create()->currentDateTime().addDays(-bounds.days);
    total = 0;
    const QList<RecordFile> all = files();
    for (const RecordFile& entry : all) {
        if (entry.changed >= oldest || !QFile::remove(entry.path)) {
            total += entry.bytes;
        }
    }
}

void RecordFolder::openNext()
{
    const QList<RecordFile> all = files();
    current = all.isEmpty() ? 1 : all.last().number + 1;
    // another till may take the same number at the same moment
    for (const int last = current + 100; current < last; ++current) {
        file = std::make_unique<QFile>(fileName(path, current));
        if (file->open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                       ownerOnly)) {
            return;
        }
        if (!QFileInfo::exists(file->fileName())) {
            break;
        }
    }
    const std::unique_ptr<QFile> refused = std::move(file);
    fail(*refused);
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
        file->resize(before); // half a line helps nobody
        const std::unique_ptr<QFile> broken = std::move(file);
        fail(*broken);
    }
    total += bytes.size();
}

/// Removes the oldest records until there is room for so many bytes.
void RecordFolder::makeRoom(qint64 wanted)
{
    if (total + wanted <= bounds.bytes) {
        return;
    }
    const QList<RecordFile> all = files();
    total = 0;
    for (const RecordFile& entry : all) {
        total += entry.bytes;
    }
    for (const RecordFile& entry : all) {
        if (total + wanted <= bounds.bytes) {
            return;
        }
        if (entry.number != current && QFile::remove(entry.path)) {
            total -= entry.bytes;
        }
    }
    if (total + wanted > bounds.bytes) {
        const std::unique_ptr<QFile> full = std::move(file);
        throw Failure(Text::tr("one record alone is larger than recording.maxMegabytes"));
    }
}

} // namespace till
