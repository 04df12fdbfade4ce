// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The client and those who look at its documents have lists of the element names of their own; each
// is the schemas' list.

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// What the pattern captures in a file, in the order of the alphabet, repetitions included.
QStringList captured(const QString& fileName, const QString& pattern)
{
    QFile file(fileName);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << fileName.toStdString();
    QStringList found;
    const QRegularExpression expression(pattern);
    auto matches = expression.globalMatch(QString::fromUtf8(file.readAll()));
    while (matches.hasNext()) {
        found.append(matches.next().captured(1));
    }
    found.sort();
    return found;
}

/// Every element that a schema has, once.
QStringList schemaNames()
{
    const QDir folder(QStringLiteral(ORVA_PROTOCOL_SCHEMA));
    QStringList names;
    const QStringList schemas = folder.entryList({u"*.xsd"_s});
    EXPECT_EQ(schemas.size(), 6);
    for (const QString& schema : schemas) {
        names += captured(folder.filePath(schema), u"<xs:element name=\"(\\w+)\""_s);
    }
    names.removeDuplicates();
    names.sort();
    return names;
}

} // namespace

TEST(ElementNames, TheListBesideTheClientIsThatOfTheSchemas)
{
    const QStringList listed = captured(QStringLiteral(ORVA_SOURCE_FOLDER) + u"/protocol/names.h"_s,
                                        u"Name \\w+\\{\"(\\w+)\"\\}"_s);
    EXPECT_GT(listed.size(), 40);
    EXPECT_EQ(listed, schemaNames());
}

TEST(ElementNames, TheListOfTheClientIsThatOfTheSchemas)
{
    const QStringList listed = captured(
        QStringLiteral(ORVA_SOURCE_FOLDER) + u"/client/elements.h"_s, u"return u\"(\\w+)\"_s"_s);
    EXPECT_GT(listed.size(), 40);
    EXPECT_EQ(listed, schemaNames());
}
