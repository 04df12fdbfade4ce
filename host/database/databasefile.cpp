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

/// @return 0, or the system's error
int create(const QByteArray& name, mode_t rights)
{
    const int descriptor =
        ::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, ownerOnly);
    if (descriptor < 0) {
        return errno;
    }
    const int failed = ::fchmod(descriptor, rights) != 0 ? errno : 0;
    ::close(descriptor);
    return failed;
}

/// The mask of the process leaves the group nothing at first, and another account may look just
/// then:
/// the file gets its name once it has its rights.
int createForOthers(const QByteArray& name, mode_t rights)
{
    const QByteArray unnamed = name + ".new-" + QByteArray::number(::getpid());
    ::unlink(unnamed.constData()); // of a process that was killed
    int error = create(unnamed, rights);
    if (error == 0 && ::link(unnamed.constData(), name.constData()) != 0) {
        error = errno;
    }
    ::unlink(unnamed.constData());
    return error;
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
    const mode_t rights = rightsOf(file);
    const int error = rights == ownerOnly ? create(QFile::encodeName(file), rights)
                                          : createForOthers(QFile::encodeName(file), rights);
    if (error == 0) {
        syncFolderOf(file);
        return true;
    }
    if (error != EEXIST) {
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
