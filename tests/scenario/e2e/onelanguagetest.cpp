// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Every command of both programs, with the usual mistakes, speaks one language: what stands in a
// text of the other one is listed in onelanguage.txt, or came from outside.

#include "tests/support/environmentvariable.h"
#include "tests/support/shop.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// What onelanguage.txt lists.
struct Exceptions
{
    QStringList latinWords;
    QList<QRegularExpression> fromOutside;

    Exceptions()
    {
        QFile file(QStringLiteral(ORVA_ONE_LANGUAGE));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.errorString());
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        for (const QString& line : lines) {
            if (line.startsWith("latin "_L1)) {
                latinWords.append(line.section(u' ', 1));
            } else if (line.startsWith("outside "_L1)) {
                // a sentence goes on below itself where a line is full
                fromOutside.append(
                    QRegularExpression(line.section(u' ', 1).replace(u' ', u"\\s+"_s)));
            }
        }
        EXPECT_GT(latinWords.size(), 50);
        EXPECT_GT(fromOutside.size(), 5);
    }
};

/// Without a word that is a path, a key, an option, a number or an identifier.
bool isText(const QString& token)
{
    static const QRegularExpression other(u"[0-9/._=@*\\[\\]{}<>\\\\|-]|[a-z][A-Z]"_s);
    return !token.contains(other);
}

/// The words of a Russian line that are English ones.
QStringList latinWordsIn(const QString& line, const Exceptions& exceptions)
{
    static const QRegularExpression blanks(u"[\\s«»\"'`(),:;!?…]+"_s);
    static const QRegularExpression latin(u"^[A-Za-z]{2,}$"_s);
    static const QRegularExpression sentenceEnd(u"[.]+$"_s);
    QStringList found;
    for (QString token : line.split(blanks, Qt::SkipEmptyParts)) {
        token.remove(sentenceEnd);
        if (isText(token) && latin.match(token).hasMatch() &&
            !exceptions.latinWords.contains(token)) {
            found.append(token);
        }
    }
    return found;
}

QStringList cyrillicWordsIn(const QString& line)
{
    static const QRegularExpression cyrillic(u"[\\p{Cyrillic}]+"_s,
                                             QRegularExpression::UseUnicodePropertiesOption);
    QStringList found;
    auto matches = cyrillic.globalMatch(line);
    while (matches.hasNext()) {
        found.append(matches.next().captured());
    }
    return found;
}

class OneLanguage : public Shop, public ::testing::WithParamInterface<const char*>
{
protected:
    bool isRussian() const { return QByteArray(GetParam()).startsWith("ru"); }

    /// Goods, owners and messages without a letter: they come from outside.
    void SetUp() override
    {
        Shop::SetUp();
        stopServer();
        writeFile(u"rules.toml"_s, u"[auth]\nuser = \"till\"\npassword = \"secret\"\n"
                                   "apiKey = \"demo\"\n[discount]\npercent = 5\n[earn]\n"
                                   "percent = 5\n[spend]\npercent = 50\n[[card]]\n"
                                   "number = \"2200000000017\"\nbalance = 500.00\n[[message]]\n"
                                   "channel = \"pos\"\ntext = \"{balance}\"\n[[message]]\n"
                                   "channel = \"check\"\ntext = \"{earn}\"\n"_s);
        startServer(path(u"rules.toml"_s));
        writeConfig();
        writeFile(u"orva.toml"_s,
                  readFile(u"orva.toml"_s) + u"[recording]\nfolder = \"records\"\n"_s);
        writeFile(u"sale.toml"_s, u"type = \"sale\"\ncard = \"2200000000017\"\n[[line]]\n"
                                  "code = \"1001\"\nname = \"1001\"\nprice = 149.90\n"
                                  "quantity = 2\n[[line]]\ncode = \"1002\"\nname = \"1002\"\n"
                                  "price = 89.90\nquantity = 0.765\nunit = \"kg\"\n"_s);
    }

    /// Judges what a program has printed.
    void judge(const QString& what, QString printed)
    {
        ++judged;
        for (const QRegularExpression& outside : exceptions.fromOutside) {
            QRegularExpression anywhere = outside;
            anywhere.setPatternOptions(QRegularExpression::MultilineOption);
            printed.remove(anywhere);
        }
        for (const QString& line : printed.split(u'\n')) {
            const QStringList words =
                isRussian() ? latinWordsIn(line, exceptions) : cyrillicWordsIn(line);
            EXPECT_TRUE(words.isEmpty())
                << GetParam() << ", " << qPrintable(what) << ": " << qPrintable(words.join(u", "_s))
                << "\nin: " << qPrintable(line);
        }
    }

    void runTill(const QString& line)
    {
        const RunResult result = till(line.split(u' ', Qt::SkipEmptyParts));
        EXPECT_FALSE(result.output.isEmpty() && result.exitCode != 0) << qPrintable(line);
        judge(u"orva-till "_s + line, result.output);
    }

    void runSimulator(const QString& line)
    {
        judge(u"orva-simulator "_s + line,
              runProgram(QStringLiteral(ORVA_SIMULATOR), line.split(u' ', Qt::SkipEmptyParts),
                         folder())
                  .output);
    }

    void runAll(const QString& lines)
    {
        for (const QString& line : lines.split(u'\n', Qt::SkipEmptyParts)) {
            runTill(line.trimmed());
        }
    }

    const Exceptions exceptions;
    const EnvironmentVariable locale{"LC_ALL", GetParam()};
    const EnvironmentVariable language{"LANGUAGE", ""};
    int judged = 0;
};

INSTANTIATE_TEST_SUITE_P(Locales, OneLanguage, ::testing::Values("C", "ru_RU.UTF-8"),
                         [](const auto& row) {
                             return row.param[0] == 'C' ? "english" : "russian";
                         });

} // namespace

TEST_P(OneLanguage, isThatOfWhatGoesWell)
{
    runAll(u"check sale.toml\nsell sale.toml --points 50 --tender 500 --wait 60\n"
           "return return.toml --wait 60\nchecks\nledger\nexplain last\nlog list\nlog show 1\n"
           "log export 1 case.jsonl\nlog list --from case.jsonl\nlog replay 1\ndoctor\n"
           "queue list\nqueue list --all\nqueue show 1\nqueue deliver\nqueue reauthorize\n"
           "init --defaults simulator --offline"_s);
    runSimulator(u"ledger --config rules.toml --database server.sqlite"_s);
    runSimulator(u"--version"_s);
    runSimulator(u"--deviate list"_s);
    EXPECT_EQ(judged, 21);
}

TEST_P(OneLanguage, isThatOfEveryHelp)
{
    for (const QString& command : QStringList{u""_s,
                                              u"check "_s,
                                              u"sell "_s,
                                              u"return "_s,
                                              u"work "_s,
                                              u"checks "_s,
                                              u"ledger "_s,
                                              u"explain "_s,
                                              u"doctor "_s,
                                              u"init "_s,
                                              u"verify "_s,
                                              u"log "_s,
                                              u"log list "_s,
                                              u"log show "_s,
                                              u"log export "_s,
                                              u"log replay "_s,
                                              u"queue "_s,
                                              u"queue list "_s,
                                              u"queue show "_s,
                                              u"queue deliver "_s,
                                              u"queue retry "_s,
                                              u"queue park "_s,
                                              u"queue settle "_s,
                                              u"queue reauthorize "_s}) {
        runTill(command + u"--help"_s);
    }
    for (const QString& command : QStringList{u""_s, u"ledger "_s, u"rules "_s}) {
        runSimulator(command + u"--help"_s);
    }
    EXPECT_EQ(judged, 27);
}

TEST_P(OneLanguage, isThatOfAnUndeliveredQueue)
{
    runTill(u"sell sale.toml --wait 60"_s);
    // closed while the server is away, so the confirmation waits
    {
        const auto working = startTill();
        judge(u"open"_s, working->command(u"open sale.toml"_s));
        judge(u"request"_s, working->command(u"request"_s));
        judge(u"points"_s, working->command(u"points 20"_s));
        stopServer();
        judge(u"close"_s, working->command(u"close"_s));
        judge(u"wait"_s, working->command(u"wait 1"_s));
        judge(u"queue"_s, working->command(u"queue"_s));
        for (const QString& line :
             QStringList{u"show"_s, u"opne x"_s, u"open none.toml"_s, u"points x"_s, u"tender"_s,
                         u"quantity 1 x"_s, u"suspend"_s, u"restore last"_s, u"return sale.toml"_s,
                         u"close"_s, u"abandon"_s, u"open sale.toml"_s, u"close"_s, u"help"_s}) {
            judge(line, working->command(line));
        }
        working->kill();
    }
    runAll(u"queue list\nqueue retry 2\nqueue deliver\nqueue list\nqueue park 2\nqueue list\n"
           "queue show 2\nqueue settle 2\nqueue list --all\ndoctor\ncheck sale.toml\n"
           "sell sale.toml\nreturn return.toml"_s);
    EXPECT_EQ(judged, 34);
}

TEST_P(OneLanguage, isThatOfRefusals)
{
    writeConfig(u"wrong"_s);
    runAll(u"check sale.toml\nsell sale.toml\ndoctor"_s);
    writeConfig(u"secret"_s, u"http://127.0.0.1:1/"_s);
    runAll(u"check sale.toml\ndoctor"_s);
    writeConfig(u"secret"_s, address + u"elsewhere/"_s);
    runAll(u"check sale.toml\ndoctor"_s);
    writeConfig(u"secret"_s, u"http://user@127.0.0.1:1/"_s);
    runAll(u"check sale.toml\ndoctor"_s);
    EXPECT_EQ(judged, 9);
}

TEST_P(OneLanguage, isThatOfMistakes)
{
    runAll(u"quue list\nqueue\nqueue show\nqueue show 7\nqueue retry 7\nqueue park 7\n"
           "queue settle 7\nqueue show x\ncheck\ncheck none.toml\ncheck return.toml\n"
           "return sale.toml\nreturn return.toml\nsell sale.toml --points x\n"
           "sell sale.toml --tender 1\nsell sale.toml --wait 999999\nledger --csv --json\n"
           "explain last\nexplain 9\nlog show 9\nlog replay 9\nlog export 9 x\n"
           "log list --from none\n--config none.toml checks\n--plugin none.so check sale.toml\n"
           "--database /none/till.sqlite checks\n--verbos checks\nledger more\n"
           "--database sale.toml checks\ninit --answers none"_s);
    writeFile(u"broken.toml"_s, u"[till]\ndatabase = till.sqlite\n"_s);
    writeFile(u"wrong.toml"_s, u"[till]\ndatabase = 5\n"_s);
    writeFile(u"typo.toml"_s,
              u"[till]\ndatabse = \"till.sqlite\"\n[tlil]\n[http]\nproxi = \"\"\n"_s);
    writeFile(u"secret.toml"_s, u"[Orva]\npassword = { file = \"none\" }\n"_s);
    writeFile(u"number.toml"_s, u"[queue]\nkeepDeliveredDays = 0\n"_s);
    for (const QString& config : QStringList{u"broken.toml"_s, u"wrong.toml"_s, u"typo.toml"_s,
                                             u"secret.toml"_s, u"number.toml"_s, u"."_s}) {
        const QString plugin = u" --plugin "_s + QStringLiteral(ORVA_PLUGIN);
        runAll(u"--config "_s + config + plugin + u" checks\n--config "_s + config + plugin +
               u" doctor"_s);
    }
    EXPECT_EQ(judged, 42);
}

TEST_P(OneLanguage, isThatOfBrokenCheckFiles)
{
    for (const QString& text :
         QStringList{u"type = "_s, u"type = \"sael\"\n"_s, u"type = \"sale\"\n"_s,
                     u"type = \"sale\"\n[[line]]\ncode = 5\n"_s,
                     u"type = \"sale\"\n[[line]]\ncode = \"1\"\nname = \"1\"\nprice = \"x\"\n"
                     "quantity = 1\n"_s,
                     u"type = \"sale\"\n[[line]]\ncode = \"1\"\nname = \"1\"\nprice = 1\n"
                     "quantity = 0.5\n"_s,
                     u"type = \"sale\"\nnubmer = 1\n"_s}) {
        writeFile(u"broken.toml"_s, text);
        runTill(u"check broken.toml"_s);
    }
    EXPECT_EQ(judged, 7);
}

TEST_P(OneLanguage, isThatOfTheServersMistakes)
{
    writeFile(u"bad.toml"_s, u"[earn]\nprecent = 5\n"_s);
    writeFile(u"text.toml"_s, u"[earn\n"_s);
    writeFile(u"kind.toml"_s, u"[[fault]]\nkind = \"lost\"\n[[card]]\nnumber = 5\n"_s);
    writeFile(u"amount.toml"_s, u"[[card]]\nnumber = \"5\"\nbalance = \"x\"\n"_s);
    for (const QString& line :
         QStringList{u"--config bad.toml"_s, u"--config text.toml"_s, u"--config kind.toml"_s,
                     u"--config amount.toml"_s, u"--config none.toml"_s, u"--port x"_s,
                     u"--port 99999"_s, u"--lisen x"_s, u"ledgr"_s, u"--listen 256.0.0.1"_s,
                     u"ledger --database none.sqlite"_s, u"ledger --database sale.toml"_s}) {
        runSimulator(line);
    }
    runSimulator(u"--database other.sqlite --port "_s +
                 address.section(u':', -1).remove(u'/')); // taken
    EXPECT_EQ(judged, 13);
}

/// Scripts that fail: without a folder, without a server, with a till that refuses or says nothing.
TEST_P(OneLanguage, isThatOfWhatTheScriptsSayWhenTheyFail)
{
    const QString scripts = QStringLiteral(ORVA_SCRIPTS);
    const auto fails = [&](const QString& script, const QStringList& arguments,
                           const QString& english, const QString& russian) {
        const RunResult result = runProgram(scripts + script, arguments, folder());
        EXPECT_NE(result.exitCode, 0);
        const QString wanted = isRussian() ? russian : english;
        EXPECT_TRUE(result.output.contains(wanted)) << qPrintable(result.output);
        judge(script, result.output);
    };
    const auto program = [this](const QString& name, const QString& lines) {
        ASSERT_TRUE(QDir().mkpath(path(u"build/bin"_s)));
        writeFile(u"build/bin/"_s + name, u"#!/bin/sh\n"_s + lines);
        ASSERT_TRUE(QFile::setPermissions(path(u"build/bin/"_s + name),
                                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    };
    fails(u"/setup"_s, {u"something"_s}, u"is none of: run,"_s, u"не из этих слов: run,"_s);
    for (const QString& script : {u"/visit"_s, u"/desk"_s}) {
        fails(script, {}, u"name the build folder"_s, u"назовите папку сборки"_s);
        program(u"orva-simulator"_s, u"exit 1\n"_s);
        fails(script, {path(u"build"_s)}, u"the loyalty server did not start:"_s,
              u"сервер лояльности не запустился:"_s);
    }
    program(u"orva-simulator"_s, u"echo 'Listening on http://127.0.0.1:1/'\n"
                                 "case \"$1\" in ledger) ;; *) exec sleep 60 ;; esac\n"_s);
    program(u"orva-till"_s, u"read line; echo 'error: 7'\n"_s);
    fails(u"/visit"_s, {path(u"build"_s)}, u"the till refused \"open sale.toml\""_s,
          u"касса отказала в \"open sale.toml\""_s);
    program(u"orva-till"_s, u"read line\n"_s);
    fails(u"/visit"_s, {path(u"build"_s)}, u"the till did not answer \"open sale.toml\""_s,
          u"касса не ответила на \"open sale.toml\""_s);
    EXPECT_EQ(judged, 7);
}
