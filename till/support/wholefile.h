// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

/// Files that are there whole or not at all, for their owner only (0600) unless said otherwise.
namespace till::wholefile {

/// Writes a new file. It is synced, and has its name only when it is whole.
/// @throws Failure when there is a file of that name already, which stays, or it cannot be written;
/// then nothing is left
void create(const QString& fileName, const QByteArray& content);

/// Puts another content in the place of a file's, with the same rights and time of change.
/// @throws Failure when it cannot be written; the file then stays as it was
void replace(const QString& fileName, const QByteArray& content);

/// Writes a file for everybody to read (0644), in the place of one of that name.
/// @throws Failure when it cannot be written; then a former one stays as it was
void publish(const QString& fileName, const QByteArray& content);

} // namespace till::wholefile
