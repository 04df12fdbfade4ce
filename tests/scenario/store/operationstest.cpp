// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The commands of docs/operations.md, as they stand there and in their order.

#include "tests/support/postgrescluster.h"
#include "tests/support/program.h"
#include "tests/support/testfolder.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

TEST(Operations, theCommandsOfThePageDoWhatItSays)
{
    QFile page(QStringLiteral(ORVA_OPERATIONS));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    static const QRegularExpression block(u"```sh\\n(.*?)```"_s,
                                          QRegularExpression::DotMatchesEverythingOption);
    QString script = u"set -eu\nexport PATH=%1:%2:$PATH\ncd \"$(dirname \"$0\")\"\n"
                     "trap 'for d in primary standby; do pg_ctl -D $d -m immediate stop; done' "
                     "EXIT\nset -x\n"_s.arg(QFileInfo(PostgresCluster::program(u"psql"_s)).path(),
                                            QFileInfo(QStringLiteral(ORVA_STORE)).path());
    int blocks = 0;
    for (const QRegularExpressionMatch& match :
         block.globalMatch(QString::fromUtf8(page.readAll()))) {
        script += match.captured(1);
        ++blocks;
    }
    ASSERT_GE(blocks, 6);
    script += u"echo all of it\n"_s;
    const TestFolder folder;
    QStringList command{u"bash"_s, folder.write(u"operations.sh"_s, script)};
    if (geteuid() == 0) { // the server refuses to run as root
        runProgram(u"chown"_s, {u"-R"_s, u"postgres:postgres"_s, folder.file({})}, u"/"_s);
        command = QStringList{u"setpriv"_s, u"--reuid=postgres"_s, u"--regid=postgres"_s,
                              u"--clear-groups"_s} +
                  command;
    }
    QProcess shell;
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start(command.first(), command.mid(1));
    constexpr int longest = 170'000; // it restarts servers a dozen times
    const bool ended = shell.waitForFinished(longest);
    const QString printed = QString::fromUtf8(shell.readAll());
    EXPECT_TRUE(ended && shell.exitCode() == 0) << qPrintable(printed);
    EXPECT_TRUE(printed.contains(u"\nall of it\n"_s)) << qPrintable(printed);
    EXPECT_TRUE(printed.contains(u"A standby confirms each commit."_s));
}
