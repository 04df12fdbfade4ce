// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>

namespace till {

/// A check as it stood in the database's table.
struct ArchivedCheck
{
    QString id;
    qint64 number = 0;
    QString state;
    int type = 0;
    QString saleId; ///< of a return
    qint64 updatedAt = 0;
    QByteArray data; ///< as checkcodec reads it; empty for an abandoned one, and in a block's list
};

/// The file of a month: blocks of some checks each, one behind the other. A block is a list of its
/// checks and their contents, both compressed, each with its SHA-256; lists can be read without the
/// contents. Only as much of the file counts as its owner says.
namespace archivefile {

/// Writes a block behind the part that counts and cuts off what stood there.
/// @param path of the file; made when it is missing, with its folder synced
/// @param length how much of it counts
/// @return how much counts with the block, which is on the disk
/// @throws Failure when it cannot be written, or the file is shorter than what counts
qint64 append(const QString& path, qint64 length, const QList<ArchivedCheck>& checks);

/// Has a new file's or folder's name survive a power cut. @throws Failure
void syncNameOf(const QString& path);

/// Reads the blocks from the first to the last. What is damaged throws Failure with the file's
/// name.
class Reader
{
public:
    /// @param path of the file
    /// @param length how much of it counts
    Reader(const QString& path, qint64 length);

    /// Steps to the next block. @return false: there is none
    bool next();
    /// The block's checks without their contents.
    const QList<ArchivedCheck>& list() const { return checks; }
    /// The block's checks with their contents.
    QList<ArchivedCheck> whole();

private:
    [[noreturn]] void fail() const;
    QByteArray part(qint64 size, const QByteArray& digest);

    QFile file;
    const qint64 end;
    QList<ArchivedCheck> checks;
    qint64 contentSize = 0;
    QByteArray contentDigest;
    qint64 contentAt = 0;
    qint64 nextAt = 0;
};

} // namespace archivefile
} // namespace till
