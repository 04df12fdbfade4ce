// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

/// Commands that somebody pastes into a shell. They use what every Debian has: coreutils, sed, and
/// the till itself.
namespace till::doctor::shell {

/// A text as one word of a POSIX shell.
QString word(const QString& text);
/// Several, with blanks between them.
QString words(const QStringList& texts);
/// Changes the rights of files, as chmod writes it.
QString chmod(const QString& rights, const QStringList& files);
/// Edits a file in its place, or what a link leads to. @param scripts of sed
QString sed(const QStringList& scripts, const QString& file);
/// Whether the process may change the rights of a file.
bool isOwn(const QString& file);
/// Name of the account that owns a file, and of the one that the process runs as.
QString ownerOf(const QString& file);
QString account();

} // namespace till::doctor::shell
