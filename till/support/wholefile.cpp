// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/support/wholefile.h"

#include "till/failure.h"
#include "till/reason.h"
#include "till/text.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till {
namespace {

Failure refusal(const QString& fileName, const QString& reason)
{
    return Failure(Text::tr("%1 cannot be written (%2).").arg(fileName, reason));
}

void syncFolderOf(const QString& fileName)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(fileName).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

/// The content on the disk under a name that nobody looks for; it goes with the object.
class Beside
{
public:
    Beside(const QString& fileName, const QByteArray& content) : file(fileName + u".XXXXXX"_s)
    {
        if (!file.open() || file.write(content) != content.size() || !file.flush()) {
            throw refusal(fileName, reasonOf(file));
        }
        if (::fsync(file.handle()) != 0) {
            throw refusal(fileName, qt_error_string(errno));
        }
    }

    QByteArray name() const { return QFile::encodeName(file.fileName()); }
    QTemporaryFile& unnamed() { return file; }
    /// From now on it has that name alone, and stays.
    void takePlaceOf(const QString& fileName)
    {
        if (::rename(name().constData(), QFile::encodeName(fileName).constData()) != 0) {
            throw refusal(fileName, qt_error_string(errno));
        }
        file.setAutoRemove(false);
        syncFolderOf(fileName);
    }

private:
    QTemporaryFile file; // made with 0600
};

} // namespace

void wholefile::create(const QString& fileName, const QByteArray& content)
{
    if (QFileInfo::exists(fileName) || QFileInfo(fileName).isSymLink()) {
        throw refusal(fileName, qt_error_string(EEXIST));
    }
    const Beside beside(fileName, content);
    // unlike a renaming, a link never takes another file's place
    if (::link(beside.name().constData(), QFile::encodeName(fileName).constData()) != 0) {
        throw refusal(fileName, qt_error_string(errno));
    }
    syncFolderOf(fileName);
}

void wholefile::replace(const QString& fileName, const QByteArray& content)
{
    const QFileInfo former(fileName);
    Beside beside(fileName, content);
    QTemporaryFile& file = beside.unnamed();
    file.setPermissions(former.permissions());
    file.setFileTime(former.lastModified(), QFileDevice::FileModificationTime);
    beside.takePlaceOf(fileName);
}

void wholefile::publish(const QString& fileName, const QByteArray& content)
{
    Beside beside(fileName, content);
    beside.unnamed().setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                                    QFile::ReadOther);
    beside.takePlaceOf(fileName);
}

} // namespace till
