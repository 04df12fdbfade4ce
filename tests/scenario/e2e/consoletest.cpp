// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The programs towards the person at the terminal: language, progress, colour.

#include "tests/support/environmentvariable.h"
#include "tests/support/shop.h"
#include "tests/support/terminal.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

const QString tillFile = QStringLiteral(ORVA_TILL);
const QString simulatorFile = QStringLiteral(ORVA_SIMULATOR);

/// The program's texts under LC_MESSAGES or LANG alone, which count when LANGUAGE and LC_ALL are
/// empty.
RunResult runIn(const char* variable, const QByteArray& locale, const QStringList& arguments)
{
    const EnvironmentVariable language("LANGUAGE", "");
    const EnvironmentVariable all("LC_ALL", "");
    const EnvironmentVariable messages("LC_MESSAGES", "");
    const EnvironmentVariable lang("LANG", "C.UTF-8");
    const EnvironmentVariable chosen(variable, locale);
    return runProgram(tillFile, arguments, QDir::tempPath());
}

class ConsoleTest : public Shop
{
protected:
    /// A till's command on a terminal of its own.
    RunResult onTerminal(const QStringList& arguments) const
    {
        return runOnTerminal(tillFile, arguments, folder());
    }

    /// A sale whose confirmation waits in the queue and is due.
    void leaveOneUndelivered()
    {
        closeWithoutServer();
        startServer();
        EXPECT_EQ(till({u"queue"_s, u"retry"_s, u"1"_s}).exitCode, 0);
    }
};

} // namespace

TEST(ProgramLanguage, isThatOfTheEnvironment)
{
    const QString russian = u"Образцовая касса для плагинов лояльности"_s;
    const QString english = u"Reference cash desk for loyalty plug-ins"_s;
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE"}) {
        const RunResult result = runIn(variable, "ru_RU.UTF-8", {u"--help"_s});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_TRUE(result.output.startsWith(russian)) << variable << qPrintable(result.output);
    }
    for (const char* locale : {"C.UTF-8", "en_US.UTF-8", "de_DE.UTF-8"}) {
        const RunResult result = runIn("LC_ALL", locale, {u"--help"_s});
        // Qt itself may complain first about a locale that is not installed
        EXPECT_TRUE(result.output.contains(english)) << qPrintable(result.output);
        EXPECT_FALSE(result.output.contains(russian)) << qPrintable(result.output);
    }
}

TEST(ProgramLanguage, isOneThroughoutTheHelp)
{
    const EnvironmentVariable language("LANGUAGE", "ru");
    for (const QString& program : {tillFile, simulatorFile}) {
        for (const QStringList& arguments :
             {QStringList{u"--help"_s}, {u"ledger"_s, u"--help"_s}}) {
            const RunResult result = runProgram(program, arguments, QDir::tempPath());
            EXPECT_EQ(result.exitCode, 0);
            EXPECT_TRUE(result.output.contains(u"Ключи:\n"_s)) << qPrintable(result.output);
            for (const QString& word :
                 {u"Usage"_s, u"Options"_s, u"Print"_s, u"REQUIRED"_s, u" the "_s, u"INT"_s}) {
                EXPECT_FALSE(result.output.contains(word)) << qPrintable(word) << "\n"
                                                           << qPrintable(result.output);
            }
        }
    }
}

TEST_F(ConsoleTest, aVisitInRussianEndsInTheSameBooks)
{
    const EnvironmentVariable language("LANGUAGE", "ru");
    const RunResult sold =
        till({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"50"_s, u"--wait"_s, u"60"_s});
    EXPECT_EQ(sold.exitCode, 0) << qPrintable(sold.output);
    EXPECT_TRUE(sold.output.startsWith(u"Кассиру: "_s)) << qPrintable(sold.output);
    EXPECT_TRUE(sold.output.contains(u"\nОплачено: "_s)) << qPrintable(sold.output);
    EXPECT_TRUE(sold.output.endsWith(u"Очередь доставлена.\n"_s)) << qPrintable(sold.output);
    EXPECT_EQ(tillBooks(), serverBooks());
    EXPECT_TRUE(tillBooks().startsWith(u"check,card,earned,"_s));
    EXPECT_TRUE(till({u"checks"_s}).output.contains(u"закрыт"_s));
    EXPECT_TRUE(till({u"checks"_s, u"--json"_s}).output.contains(u"\"closed\""_s));
}

TEST_F(ConsoleTest, aServerHasItsPageOnATerminalAndOtherwiseWhereItIsAskedFor)
{
    const QStringList own{u"--port"_s, u"0"_s, u"--database"_s, u"own.sqlite"_s};
    const auto onOne = [&](const QStringList& more, const char* last) {
        const QByteArray interrupt = "\x03";
        return runOnTerminal(simulatorFile, own + more, folder(), 80, interrupt, last);
    };
    const RunResult seen = onOne({}, "Page at http://127.0.0.1:");
    EXPECT_EQ(seen.exitCode, 0) << qPrintable(seen.output);
    const QString before = seen.output.section(u"^C"_s, 0, 0).trimmed();
    EXPECT_TRUE(before.section(u'\n', -1).startsWith(u"Page at http://127.0.0.1:"_s))
        << qPrintable(seen.output);
    EXPECT_FALSE(onOne({u"--no-page"_s}, "Listening on ").output.contains(u"Page at"_s));
    for (const bool isAskedFor : {false, true}) {
        Program piped(simulatorFile, isAskedFor ? own + QStringList{u"--page"_s} : own, folder());
        EXPECT_FALSE(piped.waitForLine(u"Listening on "_s).isEmpty());
        if (isAskedFor) {
            EXPECT_TRUE(piped.waitForLine(u"Page at "_s).startsWith(u"http://127.0.0.1:"_s));
        }
        piped.terminate();
        EXPECT_EQ(piped.waitForEnd(), 0);
        EXPECT_EQ(piped.output().contains(u"Page at "_s), isAskedFor) << qPrintable(piped.output());
    }
}

TEST_F(ConsoleTest, failuresAndUsageErrorsAreInRussianToo)
{
    const EnvironmentVariable language("LANGUAGE", "ru");
    EXPECT_EQ(till({u"quue"_s}).output,
              u"orva-till: Команды «quue» нет; возможно, имелась в виду «queue»?\n"
              "Подробнее: «orva-till --help».\n"_s);
    EXPECT_EQ(till({u"queue"_s, u"show"_s, u"7"_s}).output,
              u"orva-till: Сообщения 7 нет; посмотрите «queue list --all».\n"_s);
    const auto working = startTill();
    EXPECT_EQ(working->command(u"opne sale.toml"_s),
              u"error: Команды «opne» нет; возможно, имелась в виду «open»?\n"_s);
}

TEST_F(ConsoleTest, theServerTellsItsPersonInRussianAndTheTillInEnglish)
{
    const EnvironmentVariable language("LANGUAGE", "ru");
    writeFile(u"bad.toml"_s, u"[earn]\nprecent = 5\n"_s);
    EXPECT_EQ(
        runProgram(simulatorFile, {u"--config"_s, u"bad.toml"_s}, folder()).output,
        u"orva-simulator: bad.toml:2: ключ «earn.precent» неизвестен; возможно, имелся в виду "
        "«earn.percent»?\n"_s);
    stopServer();
    startServer();
    writeConfig(u"wrong"_s);
    EXPECT_EQ(till({u"check"_s, u"sale.toml"_s}).exitCode, 3);
    stopServer();
    const QString said = server->output();
    EXPECT_TRUE(said.contains(u"\nПравила: "_s)) << qPrintable(said);
    EXPECT_TRUE(said.contains(u" 401 The user, the password or the key is wrong\n"_s))
        << qPrintable(said);
}

TEST_F(ConsoleTest, aDeliveryShowsABarOnATerminal)
{
    const EnvironmentVariable terminal("TERM", "xterm");
    leaveOneUndelivered();
    const RunResult delivered = onTerminal({u"queue"_s, u"deliver"_s});
    EXPECT_EQ(delivered.exitCode, 0) << qPrintable(delivered.output);
    EXPECT_TRUE(delivered.output.contains(u"\rDelivering [\033[32m####"_s))
        << qPrintable(delivered.output);
    EXPECT_TRUE(delivered.output.contains(u"] 1 of 1\033[K\r\033[K"_s))
        << qPrintable(delivered.output);
    EXPECT_TRUE(delivered.output.endsWith(u"The queue is delivered.\r\n"_s))
        << qPrintable(delivered.output);
}

TEST_F(ConsoleTest, aDeliveryIsToldInPlainLinesElsewhere)
{
    leaveOneUndelivered();
    const RunResult delivered = till({u"queue"_s, u"deliver"_s});
    EXPECT_EQ(delivered.output, u"Delivering: 1 of 1\nDelivered: 1, parked: 0.\n"
                                "The queue is delivered.\n"_s);
}

TEST_F(ConsoleTest, nothingIsSaidOfAQuietDelivery)
{
    leaveOneUndelivered();
    const RunResult delivered = onTerminal({u"--quiet"_s, u"queue"_s, u"deliver"_s});
    EXPECT_EQ(delivered.exitCode, 0);
    EXPECT_EQ(delivered.output, QString());
}

TEST_F(ConsoleTest, coloursAreLeftOutOnRequest)
{
    const EnvironmentVariable terminal("TERM", "xterm");
    const QStringList failing{u"queue"_s, u"show"_s, u"7"_s};
    EXPECT_TRUE(onTerminal(failing).output.startsWith(u"\033[31morva-till:\033[0m There is"_s));
    EXPECT_TRUE(till(failing).output.startsWith(u"orva-till: There is"_s));
    const EnvironmentVariable noColours("NO_COLOR", "1");
    EXPECT_TRUE(onTerminal(failing).output.startsWith(u"orva-till: There is"_s));
    const EnvironmentVariable empty("NO_COLOR", "");
    EXPECT_TRUE(onTerminal(failing).output.startsWith(u"\033[31m"_s));
}

TEST_F(ConsoleTest, theServerSpeaksJsonOnRequest)
{
    stopServer();
    Program json(simulatorFile,
                 {u"--json"_s, u"--port"_s, u"0"_s, u"--database"_s, path(u"server.sqlite"_s)},
                 folder());
    const QString start = u"{\"database\":"_s + json.waitForLine(u"{\"database\":"_s);
    const QJsonObject object = QJsonDocument::fromJson(start.toUtf8()).object();
    writeConfig(u"secret"_s, object.value(u"listening"_s).toString());
    EXPECT_EQ(till({u"check"_s, u"sale.toml"_s}).exitCode, 0);
    const QString line = u"{\"card\":"_s + json.waitForLine(u"{\"card\":"_s);
    const QJsonObject request = QJsonDocument::fromJson(line.toUtf8()).object();
    EXPECT_EQ(request.value(u"card"_s).toString(), u"*0017"_s) << qPrintable(line);
    EXPECT_EQ(request.value(u"status"_s).toInt(), 200) << qPrintable(line);
    EXPECT_EQ(request.value(u"path"_s).toString(), u"/api/1.x/precheck"_s) << qPrintable(line);
}
