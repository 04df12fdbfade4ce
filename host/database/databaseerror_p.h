// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/tr.h"

#include <QString>

/// The one place where a failure of the database becomes a text for people: "databaseError" with
/// the file, what SQLite says, and what to do.
namespace poshost::databaseerror {

/// @param resultCode SQLite's
tr::Tr fromSql(const QString& file, int resultCode, const QString& cause);
/// The file could not be made or its rights not be read.
tr::Tr fromSystem(const QString& file, int systemError);
/// The till was stopped while it wrote, and the file's index of its log is missing.
tr::Tr leftInTheMiddle(const QString& file);
/// @param said what SQLite's check of the whole file says, in several lines
tr::Tr damaged(const QString& file, const QString& said);
tr::Tr tooNew(const QString& file, int fileVersion, int knownVersion);
/// The file's version and its tables do not belong together.
tr::Tr wrongVersion(const QString& file, int fileVersion);
/// The file itself is empty or gone, while the log beside it holds what was written last.
tr::Tr emptied(const QString& file);
/// Work went on in a transaction after one of its statements had failed.
tr::Tr transactionFailed(const QString& file);

} // namespace poshost::databaseerror
