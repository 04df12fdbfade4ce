// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/erase/fileerasure.h"

#include "input/readfile.h"
#include "till/casereport/casereport.h"
#include "till/checks/check.h"
#include "till/checks/checkcodec.h"
#include "till/failure.h"
#include "till/person/personincheck.h"
#include "till/person/personinrecord.h"
#include "till/reason.h"
#include "till/recording/record.h"
#include "till/support/supportarchive.h"
#include "till/support/wholefile.h"
#include "till/text.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace till {
namespace {

constexpr qint64 largestFile = SupportArchive::largest;

enum class FileKind
{
    Records,
    Archive,
    Page,
    Other,
};

FileKind fileKindOf(const QByteArray& content)
{
    const QByteArray head = content.first(std::max<qsizetype>(0, content.indexOf('\n')));
    return tararchive::isOne(content)                                 ? FileKind::Archive
           : casereport::isOne(content)                               ? FileKind::Page
           : Record::isOfTill(QJsonDocument::fromJson(head).object()) ? FileKind::Records
                                                                      : FileKind::Other;
}

QByteArray maskedRecords(const QByteArray& content, const Customer& customer, int& changed)
{
    const PersonMask mask = customer.mask();
    QByteArray result;
    const QList<QByteArray> records = Record::apart(content);
    for (const QByteArray& record : records) {
        const bool isAbout = customer.isInRecord(record);
        result += isAbout ? personinrecord::masked(record, mask) : record;
        changed += isAbout ? 1 : 0;
    }
    return result;
}

QByteArray maskedMember(const TarMember& member, const Customer& customer)
{
    int ignored = 0;
    if (member.name == supportfiles::records) {
        return maskedRecords(member.content, customer, ignored);
    }
    if (member.name.startsWith(supportfiles::checkFolder + u'/')) {
        const Check check = checkcodec::decode(member.content, member.name);
        return customer.isIn(check)
                   ? checkcodec::encode(personincheck::masked(check, customer.mask()))
                   : member.content;
    }
    if (member.name.startsWith(supportfiles::logFolder + u'/')) {
        return customer.mask().maskedInPlace(member.content);
    }
    const QString text = QString::fromUtf8(member.content);
    return customer.isInText(text) ? customer.mask().masked(text).toUtf8() : member.content;
}

void learnArchive(const SupportArchive& archive, Customer& customer)
{
    const QList<QByteArray> records = Record::apart(archive.content(supportfiles::records));
    for (const QByteArray& record : records) {
        customer.learn(record);
    }
    const QList<TarMember> checks = archive.in(supportfiles::checkFolder);
    for (const TarMember& member : checks) {
        customer.learn(checkcodec::decode(member.content, member.name));
    }
}

/// @throws Failure with half a sentence
QByteArray wholeContent(const QString& fileName)
{
    try {
        return input::readFile(fileName, largestFile);
    } catch (const input::FileError& error) {
        throw Failure(error.kind() == input::FileError::Kind::TooLarge ? Text::tr("it is too large")
                                                                       : error.reason());
    }
}

QStringList filesIn(const QStringList& folders)
{
    QStringList files;
    for (const QString& folder : folders) {
        const auto entries =
            QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Name);
        for (const QFileInfo& entry : entries) {
            files.append(entry.canonicalFilePath());
        }
    }
    files.removeDuplicates();
    return files;
}

} // namespace

FileErasure::FileErasure(const QStringList& folders, const QString& databaseFile,
                         const QStringList& logs, Customer& who)
    : files(filesIn(folders)), logFiles(logs), customer(who)
{
    for (const QString& log : logs) {
        files.removeAll(QFileInfo(log).canonicalFilePath());
    }
    for (const QString& end : {QString(), u"-wal"_s, u"-shm"_s}) {
        files.removeAll(QFileInfo(databaseFile).canonicalFilePath() + end);
    }
}

void FileErasure::look()
{
    for (const QString& file : std::as_const(files)) {
        try {
            const QByteArray content = wholeContent(file);
            const FileKind kind = fileKindOf(content);
            if (kind == FileKind::Archive) {
                learnArchive(SupportArchive::parse(content, file), customer);
            } else if (kind == FileKind::Records) {
                const QList<QByteArray> records = Record::apart(content);
                for (const QByteArray& record : records) {
                    customer.learn(record);
                }
            }
        } catch (const std::exception&) {
            // told when it is to be changed
        }
    }
}

void FileErasure::erase(ErasureReport& report)
{
    for (const QString& file : std::as_const(files)) {
        try {
            eraseFile(file, report);
        } catch (const std::exception& error) {
            report.left.append(
                Text::tr("%1 was not looked through (%2).").arg(file, reasonOf(error)));
        }
    }
    for (const QString& log : logFiles) {
        eraseLog(log, report);
    }
}

void FileErasure::eraseFile(const QString& fileName, ErasureReport& report)
{
    const QByteArray content = wholeContent(fileName);
    const FileKind kind = fileKindOf(content);
    QByteArray masked = content;
    if (kind == FileKind::Records) {
        masked = maskedRecords(content, customer, report.records);
    } else if (kind == FileKind::Archive && customer.isInBytes(content)) {
        SupportArchive archive = SupportArchive::parse(content, fileName);
        bool isChanged = false;
        for (TarMember& member : archive.members) {
            const QByteArray former = std::exchange(member.content, maskedMember(member, customer));
            isChanged = isChanged || former != member.content;
        }
        masked = isChanged ? archive.written() : content;
        report.archives += isChanged ? 1 : 0;
    } else if (kind == FileKind::Page && customer.isInBytes(content)) {
        masked = customer.mask().masked(QString::fromUtf8(content)).toUtf8();
        report.pages += masked == content ? 0 : 1;
    } else if (kind == FileKind::Other && customer.isInBytes(content)) {
        report.left.append(
            Text::tr("%1 holds the card and is no file of the till's own; look at it yourself.")
                .arg(fileName));
    }
    if (masked != content) {
        wholefile::replace(fileName, masked);
    }
}

/// Overwritten where it stands: whoever writes to it goes on at its end, and no copy is left.
void FileErasure::eraseLog(const QString& fileName, ErasureReport& report)
{
    QFile file(fileName);
    if (!QFileInfo(fileName).isFile()) {
        return;
    }
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) {
        report.left.append(
            Text::tr("%1 was not looked through (%2).").arg(fileName, file.errorString()));
        return;
    }
    const PersonMask mask = customer.mask();
    int changed = 0;
    while (!file.atEnd()) {
        const qint64 start = file.pos();
        const QByteArray line = file.readLine();
        const QByteArray masked = mask.maskedInPlace(line);
        if (masked != line) {
            ++changed;
            if (!file.seek(start) || file.write(masked) != masked.size() || !file.flush()) {
                report.left.append(
                    Text::tr("%1 was not looked through (%2).").arg(fileName, reasonOf(file)));
                return;
            }
        }
    }
    report.logs += changed > 0 ? 1 : 0;
}

} // namespace till
