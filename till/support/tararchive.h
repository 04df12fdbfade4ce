// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <stdexcept>

namespace till {

/// A file in an archive.
struct TarMember
{
    QString name; ///< folders before it end with "/"
    QByteArray content;
};

/// Archives of plain files, as "tar" makes and opens them (the format ustar).
namespace tararchive {

/// Why something is no archive that is read here: half a sentence.
class Unreadable : public std::runtime_error
{
public:
    explicit Unreadable(const QString& reason) : std::runtime_error(reason.toStdString()) {}
};

/// The most members that are read.
inline constexpr qsizetype mostMembers = 10'000;

/// Whether bytes begin as an archive does.
bool isOne(const QByteArray& bytes);

/// The archive of some files, readable by their owner only once they are unpacked.
/// @param members names of at most 100 bytes
QByteArray written(const QList<TarMember>& members, const QDateTime& time);

/// The files of an archive, all in memory; nothing is unpacked anywhere.
/// @throws Unreadable when it is cut or changed, or holds what a support archive never does: links,
/// devices, folders, names that lead elsewhere, the same name twice
QList<TarMember> read(const QByteArray& bytes);

} // namespace tararchive

} // namespace till
