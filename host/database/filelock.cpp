// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/filelock.h"

#include "host/core/basicexception.h"
#include "host/database/databaseerror_p.h"

#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace poshost {

FileLock::FileLock(const QString& fileName)
    : descriptor(::open(QFile::encodeName(fileName).constData(), O_RDWR | O_CREAT | O_CLOEXEC,
                        S_IRUSR | S_IWUSR))
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
