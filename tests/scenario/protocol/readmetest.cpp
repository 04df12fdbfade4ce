// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The lines that the simulator's README offers to other projects, with this project's till in the
// place of theirs.

#include "tests/support/shop.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QString offeredLines()
{
    QFile readme(QStringLiteral(ORVA_SIMULATOR_README));
    EXPECT_TRUE(readme.open(QIODevice::ReadOnly));
    static const QRegularExpression block(u"```bash\\n(.*?)```"_s,
                                          QRegularExpression::DotMatchesEverythingOption);
    return block.match(QString::fromUtf8(readme.readAll())).captured(1);
}

class SimulatorReadme : public Shop
{};

} // namespace

TEST_F(SimulatorReadme, linesForOtherProjectsWork)
{
    const QString lines = offeredLines();
    EXPECT_GT(lines.count(u'\n'), 5);
    EXPECT_LE(lines.count(u'\n'), 15) << lines.toStdString();
    const QString programs = QFileInfo(QStringLiteral(ORVA_SIMULATOR)).path();
    writeFile(u"your-till"_s, u"#!/bin/sh\n"
                              "umask 077\n"
                              "sed \"s|^serverUrl.*|serverUrl = \\\"$3\\\"|\" orva.toml >its.toml\n"
                              "exec orva-till --config its.toml sell sale.toml --wait 60\n"_s);
    ASSERT_TRUE(QFile::setPermissions(path(u"your-till"_s), QFile::ReadOwner | QFile::ExeOwner));
    writeFile(u"lines.sh"_s,
              u"set -euxo pipefail\nPATH='%1:%2':$PATH\n%3"_s.arg(folder(), programs, lines));

    const RunResult result = runProgram(u"bash"_s, {u"lines.sh"_s}, folder());

    EXPECT_EQ(result.exitCode, 0) << qPrintable(result.output);
    EXPECT_TRUE(result.output.contains(u"\"reply-lost\""_s)) << qPrintable(result.output);
    EXPECT_TRUE(result.output.contains(u"test 1 = 1"_s)) << qPrintable(result.output);
}
