// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <stdexcept>

namespace input {

/// Why a file was not read.
class FileError : public std::runtime_error
{
public:
    enum class Kind
    {
        Unreadable, ///< what() has the system's reason
        NotRegular, ///< a folder, a device, a pipe: reading might never end
        TooLarge,
    };

    FileError(Kind errorKind, const QString& reason)
        : std::runtime_error(reason.toStdString()), failure(errorKind)
    {}

    Kind kind() const { return failure; }
    QString reason() const { return QString::fromUtf8(what()); }

private:
    Kind failure;
};

/// The whole content of a regular file of at most so many bytes. Waits for nobody: a pipe without a
/// writer is refused like everything else that is no regular file. Reads limit + 1 bytes at most,
/// whatever size the file is said to have. Any thread.
/// @throws FileError
QByteArray readFile(const QString& fileName, qint64 limit);

} // namespace input
