// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/databasefile_p.h"

#include "host/core/basicexception.h"
#include "host/database/databaseerror_p.h"
#include "host/database/databasefailure.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace poshost {

using namespace Qt::StringLiterals;

namespace databasefile {

namespace {

constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
constexpr mode_t ownerAndGroup = ownerOnly | S_IRGRP | S_IWGRP;

/// Makes the entry of a new file survive a power cut.
void syncFolderOf(const QString& file)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(file).absolutePath());
    if (const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

} // namespace

mode_t rightsOf(const QString& file)
{
    struct stat folder
    {};
    const QByteArray name = QFile::encodeName(QFileInfo(file).absolutePath());
    const bool shared = ::stat(name.constData(), &folder) == 0 && (folder.st_mode & S_ISGID) != 0 &&
                        (folder.st_mode & S_IWGRP) != 0 && (folder.st_mode & S_IRWXO) == 0;
    return shared ? ownerAndGroup : ownerOnly;
}

bool createBeside(const QString& file)
{
    const QByteArray name = QFile::encodeName(file);
    const int descriptor =
        ::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, ownerOnly);
    if (descriptor >= 0) {
        const int failed = ::fchmod(descriptor, rightsOf(file)) != 0 ? errno : 0;
        ::close(descriptor);
        if (failed != 0) {
            throw BasicException(databaseerror::fromSystem(file, failed));
        }
        syncFolderOf(file);
        return true;
    }
    if (const int error = errno; error != EEXIST) {
        throw DatabaseFailure(databaseerror::fromSystem(file, error), file,
                              QString::fromLocal8Bit(std::strerror(error)));
    }
    return false;
}

void requireNotEmptied(const QString& file)
{
    constexpr qint64 logHeaderBytes = 32;
    constexpr qint64 emptyBytes = 1; // SQLite itself calls a file of one byte empty
    // the log first: a file that another process begins meanwhile is written before its log
    const bool hasFrames = QFileInfo(file + u"-wal"_s).size() > logHeaderBytes;
    if (hasFrames && QFileInfo(file).size() <= emptyBytes) {
        throw BasicException(databaseerror::emptied(file));
    }
}

} // namespace databasefile

} // namespace poshost
