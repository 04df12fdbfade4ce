// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/docs/tree.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tree {
namespace {

QDir root()
{
    return QDir(QStringLiteral(ORVA_TREE));
}

} // namespace

QString textOf(const QString& path)
{
    QFile file(root().filePath(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll());
}

bool exists(const QString& path)
{
    const QFileInfo named(root().filePath(path));
    return named.fileName().contains(u'*')
               ? !named.dir().entryList({named.fileName()}, QDir::AllEntries).isEmpty()
               : named.exists();
}

QStringList sourcesBelow(const QString& folder)
{
    QStringList found;
    QDirIterator files(root().filePath(folder), {u"*.cpp"_s, u"*.h"_s, u"*.h.in"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        found.append(root().relativeFilePath(files.next()));
    }
    found.sort();
    return found;
}

QStringList houses()
{
    QStringList found = root().entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    found.removeIf([](const QString& folder) {
        return folder.startsWith("build"_L1) || sourcesBelow(folder).isEmpty();
    });
    return found;
}

QStringList captured(const QString& text, const QString& expression)
{
    const QRegularExpression pattern(expression, QRegularExpression::MultilineOption);
    QStringList found;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        found.append(matches.next().captured(1));
    }
    return found;
}

QStringList pathsIn(const QString& markdown)
{
    return captured(markdown, u"`([\\w.*-]+/[\\w./*-]*)`"_s);
}

} // namespace tree
