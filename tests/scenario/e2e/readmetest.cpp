// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What README.ru.md tells people to type and to write exists.

#include "tests/support/program.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString readme()
{
    QFile file(QStringLiteral(ORVA_RUSSIAN_README));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.errorString());
    return QString::fromUtf8(file.readAll());
}

/// The command lines of both programs: whole lines, and what stands in backquotes.
QStringList commandLines()
{
    static const QRegularExpression line(
        u"(?:^|`|\")((?:orva-till|orva-simulator)(?: [^`\\n]*)?)(?=$|`)"_s,
        QRegularExpression::MultilineOption);
    QStringList found;
    auto matches = line.globalMatch(readme());
    while (matches.hasNext()) {
        found.append(matches.next().captured(1));
    }
    static const QRegularExpression withVariable(u"^[A-Z_]+=\\S+ (orva-till .*)$"_s,
                                                 QRegularExpression::MultilineOption);
    matches = withVariable.globalMatch(readme());
    while (matches.hasNext()) {
        found.append(matches.next().captured(1));
    }
    return found;
}

QString helpOf(const QStringList& words)
{
    static QHash<QStringList, QString> known;
    if (known.contains(words)) {
        return known.value(words);
    }
    const QString program = words.first() == u"orva-till"_s ? QStringLiteral(ORVA_TILL)
                                                            : QStringLiteral(ORVA_SIMULATOR);
    const RunResult result =
        runProgram(program, words.mid(1) + QStringList{u"--help"_s}, QDir::tempPath());
    EXPECT_EQ(result.exitCode, 0) << qPrintable(result.output);
    known.insert(words, result.output);
    return result.output;
}

/// The commands that a help lists.
QStringList commandsIn(const QString& help)
{
    static const QRegularExpression command(u"^  ([a-z]+) "_s, QRegularExpression::MultilineOption);
    QStringList found;
    auto matches = command.globalMatch(help.section(u"\nSubcommands:\n"_s, 1));
    while (matches.hasNext()) {
        found.append(matches.next().captured(1));
    }
    return found;
}

/// Whether an option is shown with a word behind it, such as "--port NUMBER".
bool takesValue(const QString& word, const QString& help)
{
    const QString option = u"  "_s + word + u' ';
    const qsizetype at = help.indexOf(option);
    return at >= 0 && help.at(at + option.size()).isUpper();
}

/// Follows the line's commands through the helps. @return all the helps together
QString follow(const QString& line, const QStringList& words)
{
    QStringList command{words.first()};
    QString help = helpOf(command);
    QString all = help;
    for (qsizetype i = 1; i < words.size() && !commandsIn(help).isEmpty(); ++i) {
        if (takesValue(words.at(i), all)) {
            ++i;
        } else if (!words.at(i).startsWith(u'-')) {
            EXPECT_TRUE(commandsIn(help).contains(words.at(i))) << qPrintable(line);
            command.append(words.at(i));
            help = helpOf(command);
            all += help;
        }
    }
    return all;
}

} // namespace

TEST(RussianReadme, namesCommandsAndOptionsThatExist)
{
    const QStringList lines = commandLines();
    EXPECT_GE(lines.size(), 20) << qPrintable(lines.join(u'\n'));
    // otherwise no command would be looked up
    EXPECT_TRUE(commandsIn(helpOf({u"orva-till"_s})).contains(u"sell"_s));
    EXPECT_TRUE(commandsIn(helpOf({u"orva-simulator"_s})).contains(u"ledger"_s));
    for (const QString& line : lines) {
        const QStringList words = line.section(u'>', 0, 0).split(u' ', Qt::SkipEmptyParts);
        const QString help = follow(line, words);
        for (const QString& word : words) {
            if (word.startsWith(u"--"_s)) {
                EXPECT_TRUE(help.contains(u"  "_s + word + u' ')) << qPrintable(line);
            }
        }
    }
}

TEST(RussianReadme, showsSettingsThatTheTillTakesWithoutAWord)
{
    const QTemporaryDir folder(QDir::tempPath() + u"/RussianReadme-XXXXXX"_s);
    for (const QString& name : {u"password"_s, u"apikey"_s}) {
        QFile secret(folder.filePath(name));
        ASSERT_TRUE(secret.open(QIODevice::WriteOnly));
        secret.write("x\n");
        secret.setPermissions(QFile::ReadOwner);
    }
    QString settings = readme().section(u"```toml\n"_s, 1).section(u"```"_s, 0, 0);
    settings.replace(u"/etc/orva"_s, folder.path()).replace(u"/var/lib/orva"_s, folder.path());
    QFile file(folder.filePath(u"orva.toml"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(settings.toUtf8());
    file.close();
    const RunResult result =
        runProgram(QStringLiteral(ORVA_TILL), {u"checks"_s, u"--json"_s}, folder.path());
    EXPECT_EQ(result.exitCode, 0) << qPrintable(result.output);
    EXPECT_EQ(result.output, u"[\n]\n"_s);
}
