// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/queuebell.h"

#include "host/database/databasefile_p.h"
#include "host/queue/deliverylog_p.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

QString bellOf(const QString& databaseFile)
{
    return databaseFile + u".delivery-bell"_s;
}

/// A lock over the whole file; it belongs to the descriptor, not to the process, and any number may
/// have one to read.
struct flock wholeFile(short kind)
{
    struct flock lock
    {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    return lock;
}

int heldOpen(const QString& bell)
{
    const int descriptor = ::open(QFile::encodeName(bell).constData(), O_RDONLY | O_CLOEXEC);
    struct flock lock = wholeFile(F_RDLCK);
    // a file system without locks: the doctor then calls the service missing, and nothing else
    static_cast<void>(descriptor >= 0 && ::fcntl(descriptor, F_OFD_SETLK, &lock));
    return descriptor;
}

} // namespace

QueueBell::QueueBell(const QString& databaseFile)
    : file(bellOf(databaseFile)), watch(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    listen();
}

QueueBell::~QueueBell()
{
    for (const int descriptor : {watch, presence}) {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }
}

void QueueBell::listen()
{
    if (presence >= 0) {
        // the end of a removed file is told once nobody holds it any more
        ::close(presence);
        static_cast<void>(takeRings());
    }
    databasefile::createBeside(file);
    presence = heldOpen(file);
    // removing the file or its name changes its attributes as well
    if (watch < 0 ||
        ::inotify_add_watch(watch, QFile::encodeName(file).constData(), IN_ATTRIB) < 0) {
        qCWarning(logDelivery).noquote()
            << u"%1: за файлом нельзя следить (%2); о новых сообщениях доставка узнаёт не сразу"_s
                   .arg(file, QString::fromLocal8Bit(std::strerror(errno)));
    }
}

bool QueueBell::takeRings() const
{
    alignas(inotify_event) std::array<char, 4096> events{};
    bool heard = false;
    while (watch >= 0 && ::read(watch, events.data(), events.size()) > 0) {
        heard = true;
    }
    return heard;
}

void QueueBell::clear()
{
    if (takeRings() && !QFile::exists(file)) {
        listen();
    }
}

bool QueueBell::isHeard(const QString& databaseFile)
{
    const QByteArray name = QFile::encodeName(bellOf(databaseFile));
    const int descriptor = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    struct flock lock = wholeFile(F_WRLCK);
    const bool isAsked = ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0;
    ::close(descriptor);
    return isAsked && lock.l_type != F_UNLCK;
}

void QueueBell::ring(const QString& databaseFile)
{
    const QByteArray name = QFile::encodeName(bellOf(databaseFile));
    // no file: nobody listens
    static_cast<void>(::utimensat(AT_FDCWD, name.constData(), nullptr, 0));
}

} // namespace poshost
