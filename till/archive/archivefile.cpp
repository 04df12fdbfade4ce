// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/archive/archivefile.h"

#include "host/database/database.h"
#include "till/failure.h"
#include "till/text.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

namespace till::archivefile {
namespace {

constexpr quint32 blockMark = 0x4F'43'42'31; // "OCB1"
constexpr auto streamVersion = QDataStream::Qt_6_4;
constexpr qsizetype digestSize = 32;
constexpr qint64 headSize = 4 + 4 + 4 + 2 * digestSize;
/// Far above what the checks of one block take.
constexpr qint64 largestPart = 256LL * 1024 * 1024;

QByteArray digestOf(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

QByteArray listPart(const QList<ArchivedCheck>& checks)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    stream << qint32(checks.size());
    for (const ArchivedCheck& check : checks) {
        stream << check.id << check.number << check.state << qint32(check.type) << check.saleId
               << check.updatedAt;
    }
    return qCompress(bytes);
}

QByteArray contentPart(const QList<ArchivedCheck>& checks)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    for (const ArchivedCheck& check : checks) {
        stream << check.data;
    }
    return qCompress(bytes);
}

QByteArray blockOf(const QList<ArchivedCheck>& checks)
{
    const QByteArray list = listPart(checks);
    const QByteArray content = contentPart(checks);
    QByteArray head;
    QDataStream stream(&head, QIODevice::WriteOnly);
    stream << blockMark << quint32(list.size()) << quint32(content.size());
    return head + digestOf(list) + digestOf(content) + list + content;
}

[[noreturn]] void failToWrite(const QString& path, const QString& cause)
{
    throw Failure(Text::tr("%1 cannot be written: %2.").arg(path, cause));
}

void sync(int descriptor, const QString& path)
{
    if (::fsync(descriptor) != 0) {
        failToWrite(path, qt_error_string(errno));
    }
}

} // namespace

void syncNameOf(const QString& path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        failToWrite(path, qt_error_string(errno));
    }
    const int result = ::fsync(descriptor);
    const int error = errno;
    ::close(descriptor);
    if (result != 0) {
        failToWrite(path, qt_error_string(error));
    }
}

qint64 append(const QString& path, qint64 length, const QList<ArchivedCheck>& checks)
{
    QFile file(path);
    const bool isNew = length == 0;
    if (isNew) {
        file.remove(); // of a process that was killed; it may be another account's alone
    }
    const QFile::Permissions rights = poshost::Database::rightsOf(path);
    // whatever the mask of the process, which decides about open
    if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered, rights) ||
        (isNew && !file.setPermissions(rights))) {
        failToWrite(path, file.errorString());
    }
    if (file.size() < length) {
        throw Failure(Text::tr("%1 is shorter than it was; put a copy of it back, or ask for help.")
                          .arg(path));
    }
    const QByteArray block = blockOf(checks);
    if (!file.resize(length) || !file.seek(length) || file.write(block) != block.size()) {
        failToWrite(path, file.errorString());
    }
    sync(file.handle(), path);
    if (isNew) {
        syncNameOf(path);
    }
    return length + block.size();
}

Reader::Reader(const QString& path, qint64 length) : file(path), end(length)
{
    if (!file.open(QIODevice::ReadOnly)) {
        throw Failure(Text::tr("The archive %1 cannot be read: %2.").arg(path, file.errorString()));
    }
    if (file.size() < end) {
        fail();
    }
}

void Reader::fail() const
{
    throw Failure(Text::tr("The archive %1 is damaged; put a copy of it back, or ask for help.")
                      .arg(file.fileName()));
}

/// Some bytes that are the ones that were written.
QByteArray Reader::part(qint64 size, const QByteArray& digest)
{
    const QByteArray bytes = file.read(size);
    if (bytes.size() != size || digestOf(bytes) != digest) {
        fail();
    }
    return qUncompress(bytes);
}

bool Reader::next()
{
    if (nextAt >= end) {
        return false;
    }
    file.seek(nextAt);
    const QByteArray head = file.read(headSize);
    QDataStream stream(head);
    quint32 mark = 0;
    quint32 listSize = 0;
    quint32 size = 0;
    stream >> mark >> listSize >> size;
    if (head.size() != headSize || mark != blockMark || listSize > largestPart ||
        size > largestPart || nextAt + headSize + listSize + size > end) {
        fail();
    }
    const QByteArray list = part(listSize, head.mid(headSize - 2 * digestSize, digestSize));
    contentDigest = head.right(digestSize);
    contentAt = nextAt + headSize + listSize;
    contentSize = size;
    nextAt = contentAt + size;
    QDataStream entries(list);
    entries.setVersion(streamVersion);
    qint32 count = 0;
    entries >> count;
    checks.clear();
    for (qint32 i = 0; i < count && entries.status() == QDataStream::Ok; ++i) {
        ArchivedCheck check;
        qint32 type = 0;
        entries >> check.id >> check.number >> check.state >> type >> check.saleId >>
            check.updatedAt;
        check.type = type;
        checks.append(check);
    }
    if (entries.status() != QDataStream::Ok) {
        fail();
    }
    return true;
}

QList<ArchivedCheck> Reader::whole()
{
    file.seek(contentAt);
    const QByteArray bytes = part(contentSize, contentDigest);
    QDataStream stream(bytes);
    stream.setVersion(streamVersion);
    QList<ArchivedCheck> filled = checks;
    for (ArchivedCheck& check : filled) {
        stream >> check.data;
    }
    if (stream.status() != QDataStream::Ok) {
        fail();
    }
    return filled;
}

} // namespace till::archivefile
