// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The names in the last column of what nm lists.
QStringList symbols(const QStringList& options)
{
    QProcess nm;
    nm.start(QStringLiteral(ORVA_NM), options + QStringList{QStringLiteral(ORVA_PLUGIN_FILE)});
    EXPECT_TRUE(nm.waitForFinished(50000)) << nm.errorString().toStdString();
    EXPECT_EQ(nm.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(nm.exitCode(), 0) << nm.readAllStandardError().toStdString();
    QStringList names;
    const QString output = QString::fromLocal8Bit(nm.readAllStandardOutput());
    for (const QString& line : output.split(u'\n', Qt::SkipEmptyParts)) {
        names.append(line.section(u' ', -1));
    }
    names.sort();
    return names;
}

TEST(Symbols, TheModuleDefinesTheTwoEntryPointsForOthersAndNothingElse)
{
    EXPECT_EQ(symbols({u"-D"_s, u"--defined-only"_s}),
              (QStringList{u"qt_plugin_instance"_s, u"qt_plugin_query_metadata_v2"_s}));
}

TEST(Symbols, TheSharedPointersAreTakenFromTheHost)
{
    // The pointer itself or, where the compiler has not inlined it, the operation that reads it.
    const QString needed = symbols({u"-D"_s, u"--undefined-only"_s}).join(u'\n');
    for (const auto& service :
         {u"9SingletonI6ConfigE"_s, u"9SingletonI7SessionE"_s, u"9SingletonI13DBQueueBrokerE"_s,
          u"11MockFactoryI10RestClientE"_s, u"11MockFactoryI11CurrentTimeE"_s}) {
        EXPECT_TRUE(needed.contains(u"_ZN"_s + service)) << service.toStdString();
    }
}

} // namespace
