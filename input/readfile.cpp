// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "input/readfile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace input {
namespace {

[[noreturn]] void failToRead(int error)
{
    throw FileError(FileError::Kind::Unreadable, qt_error_string(error));
}

/// Closes when it ends.
struct Descriptor
{
    explicit Descriptor(int opened) : number(opened) {}
    ~Descriptor()
    {
        if (number >= 0) {
            ::close(number);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    const int number;
};

} // namespace

QByteArray readFile(const QString& fileName, qint64 limit)
{
    // not blocking: to open a pipe would wait for its writer
    const Descriptor file(::open(QFile::encodeName(fileName).constData(),
                                 O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat facts = {};
    if (file.number < 0 || ::fstat(file.number, &facts) != 0) {
        failToRead(errno);
    }
    if (!S_ISREG(facts.st_mode)) {
        throw FileError(FileError::Kind::NotRegular, {});
    }
    QByteArray content;
    QFile reader;
    if (!reader.open(file.number, QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        failToRead(errno);
    }
    content = reader.read(limit + 1);
    if (reader.error() != QFileDevice::NoError) {
        throw FileError(FileError::Kind::Unreadable, reader.errorString());
    }
    if (content.size() > limit) {
        throw FileError(FileError::Kind::TooLarge, {});
    }
    return content;
}

} // namespace input
