// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// One file with what helps to find a fault: what is in it, what is not, and that it is of use
// elsewhere.

#include "tests/support/shop.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

const QString soldCard = u"2200000000017"_s;

class SupportTest : public Shop
{
protected:
    void SetUp() override
    {
        Shop::SetUp();
        writeFile(u"orva.toml"_s,
                  readFile(u"orva.toml"_s) + u"[recording]\nfolder = \"records\"\n"_s);
    }

    /// Two sales and a return, with their records.
    void trade()
    {
        done({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"20"_s, u"--wait"_s, u"30"_s});
        done({u"return"_s, u"return.toml"_s, u"--wait"_s, u"30"_s});
        done({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"30"_s});
        writeFile(u"log4qt.properties"_s, u"log4j.logger.orva=DEBUG, file\n"
                                          "log4j.appender.file=org.apache.log4j.FileAppender\n"
                                          "log4j.appender.file.file=till.log\n"
                                          "log4j.appender.file.appendFile=true\n"_s);
        writeFile(u"till.log"_s, u"2026-11-22 09:53:41 card 2200 0000 0001 7 of Соколова Анна\n"_s);
    }

    QByteArray bytesOf(const QString& name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
        return file.readAll();
    }

    /// A program in a folder where nothing is but the archive and a plug-in to replay with.
    RunResult elsewhere(const QStringList& arguments)
    {
        const QString other = path(u"elsewhere"_s);
        if (!QFileInfo::exists(other)) {
            EXPECT_TRUE(QDir().mkpath(other));
            EXPECT_TRUE(QFile::copy(path(u"case.tar"_s), other + u"/case.tar"_s));
        }
        return runProgram(QStringLiteral(ORVA_TILL),
                          QStringList{u"--plugin"_s, QStringLiteral(ORVA_PLUGIN)} + arguments,
                          other);
    }
};

} // namespace

TEST_F(SupportTest, isOneFileForItsOwnerThatBareToolsOpen)
{
    trade();
    const QString said = done({u"support"_s, u"case.tar"_s, u"--records"_s, u"all"_s});
    EXPECT_EQ(QFile::permissions(path(u"case.tar"_s)) & 0x0777, QFile::Permissions(0x0600));
    const RunResult listed = runProgram(u"tar"_s, {u"-tf"_s, u"case.tar"_s}, folder());
    EXPECT_EQ(listed.exitCode, 0) << qPrintable(listed.output);
    const QStringList names = listed.output.split(u'\n', Qt::SkipEmptyParts);
    for (const QString& name :
         {u"config.toml"_s, u"doctor.txt"_s, u"doctor.json"_s, u"queue.json"_s, u"checks.json"_s,
          u"records.jsonl"_s, u"cases/1.html"_s, u"cases/3.html"_s, u"checks/1.check"_s,
          u"checks/3.check"_s, u"log/1.log"_s}) {
        EXPECT_TRUE(names.contains(name)) << qPrintable(name) << " in\n"
                                          << qPrintable(listed.output);
        EXPECT_TRUE(said.contains(name)) << qPrintable(name) << " in\n" << qPrintable(said);
    }
    EXPECT_EQ(names.first(), u"support.json"_s);
    EXPECT_TRUE(said.contains(u"Card numbers and names are masked."_s)) << qPrintable(said);
    EXPECT_EQ(QDir(folder()).entryList({u"case.tar*"_s}, QDir::Files), QStringList{u"case.tar"_s});
}

TEST_F(SupportTest, givesNobodyAway)
{
    trade();
    done({u"support"_s, u"case.tar"_s, u"--records"_s, u"all"_s});
    const QByteArray bytes = bytesOf(u"case.tar"_s);
    EXPECT_TRUE(bytes.contains("****0017"));
    EXPECT_TRUE(bytes.contains("2026-11-22 09:53:41 card ****"));
    for (const QString& secret : {soldCard, u"2200 0000 0001 7"_s, u"Соколова"_s, u"Анна"_s}) {
        EXPECT_FALSE(bytes.contains(secret.toUtf8())) << qPrintable(secret);
        QByteArray wide; // as a stored check has its texts
        for (const QChar character : secret) {
            wide.append(char(character.unicode() >> 8)).append(char(character.unicode() & 0xff));
        }
        EXPECT_FALSE(bytes.contains(wide)) << qPrintable(secret);
    }
    EXPECT_FALSE(bytes.contains("\"secret\""));
    EXPECT_FALSE(bytes.contains("\"demo\""));
    EXPECT_TRUE(bytes.contains("password = \"***\""));
    done({u"support"_s, u"whole.tar"_s, u"--records"_s, u"all"_s, u"--with-cards"_s});
    EXPECT_TRUE(bytesOf(u"whole.tar"_s).contains(soldCard.toUtf8()));
    EXPECT_FALSE(bytesOf(u"whole.tar"_s).contains("\"secret\""));
}

TEST_F(SupportTest, isReadElsewhere)
{
    trade();
    done({u"support"_s, u"case.tar"_s, u"--records"_s, u"all"_s});
    const RunResult records = elsewhere({u"log"_s, u"list"_s, u"--from"_s, u"case.tar"_s});
    EXPECT_EQ(records.exitCode, 0) << qPrintable(records.output);
    const qsizetype rows = done({u"log"_s, u"list"_s}).count(u"****0017"_s);
    EXPECT_GE(rows, 6);
    EXPECT_EQ(records.output.count(u"****0017"_s), rows) << qPrintable(records.output);
    const RunResult replay = elsewhere({u"log"_s, u"replay"_s, u"case.tar"_s});
    EXPECT_EQ(replay.exitCode, 0) << qPrintable(replay.output);
    EXPECT_EQ(replay.output.count(u"identical"_s), 3) << qPrintable(replay.output);
    const QJsonArray checks = list({u"checks"_s});
    ASSERT_EQ(checks.size(), 3);
    for (const auto& check : checks) {
        const QString id = check.toObject().value("id"_L1).toString();
        const QString here = done({u"explain"_s, id});
        const RunResult there = elsewhere({u"explain"_s, id, u"--from"_s, u"case.tar"_s});
        EXPECT_EQ(there.exitCode, 0) << qPrintable(there.output);
        EXPECT_EQ(there.output.count(u'\n'), here.count(u'\n')) << qPrintable(there.output);
    }
    const RunResult report = elsewhere({u"doctor"_s, u"--from"_s, u"case.tar"_s});
    EXPECT_EQ(report.exitCode, 0) << qPrintable(report.output);
    EXPECT_TRUE(report.output.contains(u"checks: "_s)) << qPrintable(report.output);
    EXPECT_EQ(QDir(path(u"elsewhere"_s)).entryList(QDir::Files | QDir::Hidden),
              QStringList{u"case.tar"_s});
}

TEST_F(SupportTest, holdsTheChecksThatAreNamedWithTheirRecords)
{
    trade();
    done({u"support"_s, u"case.tar"_s, u"--check"_s, u"last"_s});
    const RunResult explained = elsewhere({u"explain"_s, u"last"_s, u"--from"_s, u"case.tar"_s});
    EXPECT_EQ(explained.exitCode, 0) << qPrintable(explained.output);
    const RunResult records = elsewhere({u"log"_s, u"replay"_s, u"case.tar"_s});
    EXPECT_EQ(records.output.count(u"identical"_s), 1) << qPrintable(records.output);
}

TEST_F(SupportTest, showsItsRecordsAsTheirPages)
{
    trade();
    done({u"support"_s, u"case.tar"_s, u"--records"_s, u"1,3"_s});
    EXPECT_EQ(runProgram(u"tar"_s, {u"-xf"_s, u"case.tar"_s}, folder()).exitCode, 0);
    EXPECT_EQ(QDir(path(u"cases"_s)).entryList(QDir::Files),
              (QStringList{u"1.html"_s, u"3.html"_s}));
    for (const QString& number : {u"1"_s, u"3"_s}) {
        done({u"log"_s, u"export"_s, number, u"--html"_s, u"page.html"_s});
        EXPECT_EQ(bytesOf(u"cases/"_s + number + u".html"_s), bytesOf(u"page.html"_s));
        EXPECT_TRUE(bytesOf(u"page.html"_s).contains("calls, identical."));
        EXPECT_TRUE(QFile::remove(path(u"page.html"_s)));
    }
}

TEST_F(SupportTest, hasTheLastCheckThatTheTillHas)
{
    trade(); // its return is older than its last sale
    done({u"support"_s, u"case.tar"_s, u"--records"_s, u"all"_s});
    const QString here = done({u"explain"_s, u"last"_s});
    const RunResult there = elsewhere({u"explain"_s, u"last"_s, u"--from"_s, u"case.tar"_s});
    EXPECT_EQ(there.exitCode, 0) << qPrintable(there.output);
    const auto heading = [](const QString& text) { return text.section(u'\n', 0, 0); };
    EXPECT_TRUE(heading(here).startsWith(u"Sale No "_s)) << qPrintable(here);
    EXPECT_EQ(heading(there.output), heading(here));
}

TEST_F(SupportTest, printsTheLogOfItsExaminationOnlyWhenAsked)
{
    const QString ofPlugin = u" orva critical: "_s;
    const QString said = done({u"support"_s, u"case.tar"_s});
    EXPECT_FALSE(said.contains(ofPlugin)) << qPrintable(said);
    const QString more = done({u"--verbose"_s, u"support"_s, u"more.tar"_s});
    EXPECT_TRUE(more.contains(ofPlugin)) << qPrintable(more);
}

TEST_F(SupportTest, isMadeOfABrokenTill)
{
    writeFile(u"orva.toml"_s, u"[Orva]\nserverUrl = 17\npassword = \"secret\"\n[till]\n"
                              "database = \"no/such/till.sqlite\"\n"_s);
    const RunResult made = till({u"support"_s, u"case.tar"_s});
    EXPECT_EQ(made.exitCode, 0) << qPrintable(made.output);
    EXPECT_TRUE(made.output.contains(u"note: There is no database"_s)) << qPrintable(made.output);
    EXPECT_FALSE(QFileInfo::exists(path(u"no"_s)));
    EXPECT_FALSE(bytesOf(u"case.tar"_s).contains("\"secret\""));
    EXPECT_EQ(till({u"doctor"_s, u"--from"_s, u"case.tar"_s}).exitCode, 1);
}

TEST_F(SupportTest, takesNoOtherFilesPlaceAndLeavesNoHalfOne)
{
    writeFile(u"case.tar"_s, u"mine"_s);
    done({u"checks"_s}); // makes the database
    EXPECT_EQ(till({u"support"_s, u"case.tar"_s}).exitCode, 1);
    EXPECT_EQ(readFile(u"case.tar"_s), u"mine"_s);
    EXPECT_EQ(till({u"support"_s, u"no-such-folder/case.tar"_s}).exitCode, 1);
    EXPECT_EQ(till({u"support"_s, u"new.tar"_s, u"--records"_s, u"17"_s}).exitCode, 2);
    EXPECT_EQ(till({u"support"_s, u"new.tar"_s, u"--check"_s, u"17"_s}).exitCode, 2);
    EXPECT_EQ(QDir(folder()).entryList({u"new.tar*"_s}, QDir::Files), QStringList());
    for (const QStringList& command : {QStringList{u"doctor"_s}, {u"explain"_s, u"1"_s}}) {
        const RunResult refused = till(command + QStringList{u"--from"_s, u"case.tar"_s});
        EXPECT_EQ(refused.exitCode, 2) << qPrintable(refused.output);
        EXPECT_TRUE(refused.output.contains(u"case.tar is no support archive"_s))
            << qPrintable(refused.output);
    }
}
