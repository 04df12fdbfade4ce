// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The till's log with the logging library, whose configuration is looked for in the till's folder.

#include "tests/support/shop.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

const QString precheckLine = QStringLiteral("Выполнение предварительного запроса");

class LibraryLogTest : public Shop
{
protected:
    void logToFile(const QString& more) const
    {
        writeFile(u"log4qt.properties"_s, u"log4j.logger.orva=DEBUG, file\n"
                                          "log4j.appender.file=org.apache.log4j.FileAppender\n"
                                          "log4j.appender.file.file=till.log\n"_s +
                                              more);
    }

    void askForUnknownCard() const
    {
        writeFile(u"unknown.toml"_s, readFile(u"sale.toml"_s).replace(u"0017"_s, u"9999"_s));
    }
};

} // namespace

TEST_F(LibraryLogTest, WithoutAConfigurationErrorsAreOnTheConsole)
{
    askForUnknownCard();
    const RunResult sold = till({u"sell"_s, u"unknown.toml"_s});
    EXPECT_EQ(sold.exitCode, 3) << qPrintable(sold.output);
    EXPECT_TRUE(sold.output.contains(u"orva critical: "_s)) << qPrintable(sold.output);
    EXPECT_FALSE(sold.output.contains(precheckLine)) << qPrintable(sold.output);
}

TEST_F(LibraryLogTest, WithoutAConfigurationVerboseShowsEveryLineOnce)
{
    const RunResult checked = till({u"--verbose"_s, u"check"_s, u"sale.toml"_s});
    EXPECT_EQ(checked.output.count(u"orva info: Адрес сервера"_s), 1) << qPrintable(checked.output);
    EXPECT_EQ(checked.output.count(u"orva debug: "_s + precheckLine), 2)
        << qPrintable(checked.output);
}

TEST_F(LibraryLogTest, WithAConfigurationTheTillAddsNothing)
{
    logToFile(u"log4j.appender.file.appendFile=true\n"_s);
    for (qsizetype run = 1; run <= 2; ++run) {
        const RunResult checked = till({u"--verbose"_s, u"check"_s, u"sale.toml"_s});
        EXPECT_EQ(checked.exitCode, 0) << qPrintable(checked.output);
        EXPECT_FALSE(checked.output.contains(precheckLine)) << qPrintable(checked.output);
        EXPECT_EQ(readFile(u"till.log"_s).count(precheckLine), 2 * run);
    }
}

TEST_F(LibraryLogTest, DoctorLeavesAWorkingTillsLogAsItIs)
{
    logToFile({}); // the library's own choice is not to append
    const auto work = startTill();
    work->command(u"open sale.toml"_s);
    const QString before = readFile(u"till.log"_s);
    ASSERT_TRUE(before.contains(precheckLine)) << qPrintable(before);

    const RunResult doctor = till({u"doctor"_s});
    EXPECT_NE(doctor.exitCode, -1) << qPrintable(doctor.output);
    EXPECT_TRUE(doctor.output.contains(u"but every start empties till.log"_s))
        << qPrintable(doctor.output);
    EXPECT_EQ(readFile(u"till.log"_s).toStdString(), before.toStdString());

    work->command(u"close"_s);
    EXPECT_TRUE(readFile(u"till.log"_s).startsWith(before));
}

TEST_F(LibraryLogTest, CommandsThatNeedNoServerLeaveTheLogAsItIs)
{
    logToFile({});
    writeFile(u"orva.toml"_s, readFile(u"orva.toml"_s) + u"[recording]\nfolder = \"records\"\n"_s);
    till({u"check"_s, u"sale.toml"_s});
    const QString before = readFile(u"till.log"_s);
    ASSERT_FALSE(before.isEmpty());
    for (const QStringList& command :
         {QStringList{u"checks"_s}, QStringList{u"ledger"_s}, QStringList{u"queue"_s, u"list"_s},
          QStringList{u"log"_s, u"replay"_s, u"all"_s}}) {
        EXPECT_EQ(till(command).exitCode, 0) << qPrintable(command.join(u' '));
    }
    EXPECT_EQ(readFile(u"till.log"_s).toStdString(), before.toStdString());
}

TEST_F(LibraryLogTest, DoctorSaysWhereTheLogGoes)
{
    const RunResult console = till({u"doctor"_s});
    EXPECT_TRUE(console.output.contains(u"without an appender: to the till's console"_s))
        << qPrintable(console.output);
    EXPECT_FALSE(console.output.contains(u"orva debug"_s)) << qPrintable(console.output);
    logToFile(u"log4j.appender.file.appendFile=true\n"_s);
    const RunResult file = till({u"doctor"_s});
    EXPECT_TRUE(file.output.contains(path(u"log4qt.properties"_s) + u", to till.log"_s))
        << qPrintable(file.output);
    EXPECT_FALSE(QFile::exists(path(u"till.log"_s)));
}

TEST_F(LibraryLogTest, TheConfigurationOfTheReadmesAppends)
{
    for (const QString& readme :
         {QStringLiteral(ORVA_README), QStringLiteral(ORVA_RUSSIAN_README)}) {
        QFile file(readme);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(readme);
        const QString shown = QString::fromUtf8(file.readAll())
                                  .section(u"```\nlog4j"_s, 1, 1)
                                  .section(u"```"_s, 0, 0);
        ASSERT_FALSE(shown.isEmpty()) << qPrintable(readme);
        QString properties = u"log4j"_s + shown;
        writeFile(u"log4qt.properties"_s, properties.replace(u"/var/log/orva/"_s, QString()));
        QFile::remove(path(u"till.log"_s));
        till({u"check"_s, u"sale.toml"_s});
        till({u"check"_s, u"sale.toml"_s});
        EXPECT_EQ(readFile(u"till.log"_s).count(precheckLine), 4) << qPrintable(readme);
        const RunResult doctor = till({u"doctor"_s});
        EXPECT_TRUE(doctor.output.contains(u", to till.log"_s)) << qPrintable(doctor.output);
        EXPECT_FALSE(doctor.output.contains(u"empties"_s)) << qPrintable(doctor.output);
    }
}
