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

} // namespace

QueueBell::QueueBell(const QString& databaseFile)
    : file(bellOf(databaseFile)), watch(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    listen();
}

QueueBell::~QueueBell()
{
    if (watch >= 0) {
        ::close(watch);
    }
}

void QueueBell::listen()
{
    databasefile::createBeside(file);
    // removing the file or its name changes its attributes as well
    if (watch < 0 ||
        ::inotify_add_watch(watch, QFile::encodeName(file).constData(), IN_ATTRIB) < 0) {
        qCWarning(logDelivery).noquote()
            << u"%1: за файлом нельзя следить (%2); о новых сообщениях доставка узнаёт не сразу"_s
                   .arg(file, QString::fromLocal8Bit(std::strerror(errno)));
    }
}

void QueueBell::clear()
{
    alignas(inotify_event) std::array<char, 4096> events{};
    bool heard = false;
    while (watch >= 0 && ::read(watch, events.data(), events.size()) > 0) {
        heard = true;
    }
    if (heard && !QFile::exists(file)) {
        listen();
    }
}

void QueueBell::ring(const QString& databaseFile)
{
    const QByteArray name = QFile::encodeName(bellOf(databaseFile));
    // no file: nobody listens
    static_cast<void>(::utimensat(AT_FDCWD, name.constData(), nullptr, 0));
}

} // namespace poshost
