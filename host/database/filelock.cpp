// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/filelock.h"

#include "host/core/basicexception.h"
#include "host/database/databaseerror_p.h"
#include "host/database/databasefile_p.h"

#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace poshost {

namespace {

int openedOrMade(const QString& fileName)
{
    const QByteArray name = QFile::encodeName(fileName);
    int descriptor = ::open(name.constData(), O_RDWR | O_CLOEXEC);
    if (descriptor < 0 && errno == ENOENT) {
        databasefile::createBeside(fileName);
        descriptor = ::open(name.constData(), O_RDWR | O_CLOEXEC);
    }
    return descriptor;
}

} // namespace

FileLock::FileLock(const QString& fileName) : descriptor(openedOrMade(fileName))
{
    if (descriptor < 0) {
        throw BasicException(databaseerror::fromSystem(fileName, errno));
    }
    held = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    if (!held && errno != EWOULDBLOCK) {
        const int cause = errno;
        ::close(descriptor);
        throw BasicException(databaseerror::fromSystem(fileName, cause));
    }
}

FileLock::~FileLock()
{
    ::close(descriptor);
}

} // namespace poshost
