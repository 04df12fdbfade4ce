// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/support/tararchive.h"

#include <QJsonObject>

namespace till {

/// What somebody hands on to have a fault found: the files of a tar archive, of which the first one
/// says what it is.
struct SupportArchive
{
    static constexpr int version = 1;
    /// The most bytes of a file that is read.
    static constexpr qint64 largest = 256LL * 1024 * 1024;

    /// What it is and where it comes from.
    QJsonObject about;
    /// The other files, in their order.
    QList<TarMember> members;

    /// The content of a file; empty when there is none of that name.
    QByteArray content(const QString& name) const;
    /// The files in a folder of it.
    QList<TarMember> in(const QString& folder) const;

    /// As bytes of a file.
    QByteArray written() const;

    /// Whether a file begins as a tar archive does, whatever is in it; false when it cannot be
    /// read.
    static bool isLikeOne(const QString& fileName);
    /// @throws Failure (Usage) naming the file: it cannot be read, is too large, is damaged, was
    /// written by a newer till, or holds what a till does not put into one
    static SupportArchive read(const QString& fileName);
    static SupportArchive parse(const QByteArray& bytes, const QString& fileName);
};

/// The names of files in it.
namespace supportfiles {

inline const QString about = QStringLiteral("support.json");
inline const QString config = QStringLiteral("config.toml");
inline const QString doctorJson = QStringLiteral("doctor.json");
inline const QString doctorText = QStringLiteral("doctor.txt");
inline const QString queue = QStringLiteral("queue.json");
inline const QString checks = QStringLiteral("checks.json");
inline const QString records = QStringLiteral("records.jsonl");
/// Folders: the checks asked for, their queued confirmations under the same names, the newest
/// records as pages, the ends of logs.
inline const QString checkFolder = QStringLiteral("checks");
inline const QString messageFolder = QStringLiteral("messages");
inline const QString caseFolder = QStringLiteral("cases");
inline const QString logFolder = QStringLiteral("log");

} // namespace supportfiles

} // namespace till
