// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/doctor/printedmend.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

/// What every Debian has (coreutils, sed, the shell itself), and the till.
const QStringList onEveryDebian{u"chmod"_s,  u"mkdir"_s, u"rm"_s,       u"sed"_s,
                                u"export"_s, u"unset"_s, u"orva-till"_s};

/// The first words of the commands that stand behind each other.
void expectOnEveryDebian(const QString& command)
{
    // within quotes nothing ends a command
    QString bare = command;
    bare.remove(u"'\\''"_s);
    bare.remove(QRegularExpression(u"'[^']*'"_s));
    for (const QString& part :
         bare.split(QRegularExpression(u"&&|\\|\\||[;|&]"_s), Qt::SkipEmptyParts)) {
        if (!part.trimmed().isEmpty()) {
            const QString first = part.trimmed().section(u' ', 0, 0);
            EXPECT_TRUE(onEveryDebian.contains(first)) << first.toStdString();
        }
    }
}

void takeOver(const QString& name, const QByteArray& value)
{
    const QByteArray key = name.toLatin1();
    value.isEmpty() ? qunsetenv(key.constData()) : qputenv(key.constData(), value);
}

} // namespace

PrintedMend::PrintedMend(const QString& report)
{
    static const QRegularExpression beginning(u"^ *(-> |by hand: )(.*)$"_s);
    const QStringList all = report.split(u'\n');
    for (qsizetype index = 0; index < all.size(); ++index) {
        const auto match = beginning.match(all.at(index));
        if (!match.hasMatch()) {
            continue;
        }
        EXPECT_TRUE(lines.isEmpty()) << "two mends";
        lines = {match.captured(2)};
        if (match.captured(1) != "-> "_L1) {
            continue;
        }
        kind = Kind::Command;
        // what belongs into a file stands further right than the arrow
        const qsizetype column = match.capturedStart(1);
        while (index + 1 < all.size() && all.at(index + 1).startsWith(QString(column + 3, u' '))) {
            kind = Kind::Line;
            lines.append(all.at(++index).mid(column + 3));
        }
    }
    EXPECT_FALSE(lines.isEmpty()) << report.toStdString();
}

PrintedMend::~PrintedMend()
{
    if (leftRunning > 0) {
        ::kill(pid_t(leftRunning), SIGTERM);
    }
}

void PrintedMend::runAsPrinted(const QByteArray& input) const
{
    expectOnEveryDebian(lines.first());
    const QTemporaryDir elsewhere;
    QProcess shell;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, QFileInfo(QStringLiteral(ORVA_TILL)).absolutePath() + u':' +
                                      environment.value(u"PATH"_s));
    shell.setProcessEnvironment(environment);
    shell.setWorkingDirectory(elsewhere.path());
    // not the shell's pipes, which what goes on running would keep open
    shell.setStandardOutputFile(elsewhere.filePath(u"out"_s));
    shell.setStandardErrorFile(elsewhere.filePath(u"errors"_s));
    const QString tell =
        u"\ncode=$?\nprintf '%s\\n' \"$LC_ALL\" \"$QT_LOGGING_RULES\" \"$!\" >told\nexit $code\n"_s;
    shell.start(u"/bin/sh"_s, {u"-c"_s, lines.first() + tell});
    shell.write(input);
    shell.closeWriteChannel();
    EXPECT_TRUE(shell.waitForFinished());
    QFile errors(elsewhere.filePath(u"errors"_s));
    EXPECT_TRUE(errors.open(QIODevice::ReadOnly));
    EXPECT_EQ(shell.exitCode(), 0) << lines.first().toStdString() << '\n'
                                   << errors.readAll().toStdString();
    QFile told(elsewhere.filePath(u"told"_s));
    EXPECT_TRUE(told.open(QIODevice::ReadOnly));
    takeOver(u"LC_ALL"_s, told.readLine().trimmed());
    takeOver(u"QT_LOGGING_RULES"_s, told.readLine().trimmed());
    leftRunning = told.readLine().trimmed().toLongLong();
    if (!qEnvironmentVariableIsSet("QT_LOGGING_RULES")) {
        QLoggingCategory::setFilterRules(QString());
    }
}

void PrintedMend::putIntoFile() const
{
    static const QRegularExpression place(
        u"^(.*), (in the place of line (\\d+)|behind line (\\d+)|at its end):$"_s);
    const auto match = place.match(lines.first());
    ASSERT_TRUE(match.hasMatch()) << lines.first().toStdString();
    QFile file(match.captured(1));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite)) << match.captured(1).toStdString();
    QStringList content = QString::fromUtf8(file.readAll()).split(u'\n');
    const QStringList added = lines.mid(1);
    const int instead = match.captured(3).toInt();
    const int behind = match.captured(4).toInt();
    if (instead > 0) {
        content[instead - 1] = added.join(u'\n');
    } else {
        qsizetype at = behind > 0 ? behind : content.size() - 1;
        for (const QString& line : added) {
            content.insert(at++, line);
        }
    }
    file.resize(0);
    file.seek(0);
    file.write(content.join(u'\n').toUtf8());
}

} // namespace tests
