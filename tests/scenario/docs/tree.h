// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

/// The project's own files, by paths that begin at its root.
namespace tree {

/// The text of a file; a failure of the test where it cannot be read.
QString textOf(const QString& path);
/// Whether there is such a file or folder; "*" stands for any part of a name.
bool exists(const QString& path);
/// The sources and headers below a folder, sorted, and with them what headers are made from.
QStringList sourcesBelow(const QString& folder);
/// The folders of the root that hold sources, but for builds.
QStringList houses();
/// What the expression captures first, at each place in the text where it fits.
QStringList captured(const QString& text, const QString& expression);
/// Words in backquotes of a Markdown text that are paths: those with a "/" in them.
QStringList pathsIn(const QString& markdown);

} // namespace tree
