// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The year is the same whenever it is lived through again, and it sees what is planted.

#include "tests/scenario/year/journal.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct Lived
{
    int exitCode = -1;
    QString output;
    QByteArray journal;
};

class YearTest : public ::testing::Test
{
protected:
    /// Lives through some days in a process of its own.
    Lived live(const QStringList& arguments)
    {
        const QString file = folder.filePath(u"journal"_s);
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(ORVA_YEAR), arguments + QStringList{u"--journal"_s, file});
        EXPECT_TRUE(process.waitForFinished(-1)) << qPrintable(process.errorString());
        QFile journal(file);
        EXPECT_TRUE(journal.open(QIODevice::ReadOnly)) << qPrintable(journal.errorString());
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAll()), journal.readAll()};
    }

    Lived plant(const QString& what)
    {
        return live({u"--seed"_s, u"5"_s, u"--days"_s, u"5"_s, u"--plant"_s, what});
    }

    QTemporaryDir folder{QDir::tempPath() + u"/YearTest-XXXXXX"_s};
};

/// What the cards that a violation names must hold and do hold.
void expectViolation(const Lived& run, const QString& found)
{
    EXPECT_EQ(run.exitCode, 1) << qPrintable(run.output);
    EXPECT_TRUE(run.output.contains(u"VIOLATION with seed 5 at event "_s))
        << qPrintable(run.output);
    EXPECT_TRUE(run.output.contains(u"by the tills' closed checks it must hold "_s))
        << qPrintable(run.output);
    EXPECT_TRUE(run.output.contains(found)) << qPrintable(run.output);
    const QString lastLine = QString::fromUtf8(run.journal).trimmed().section(u'\n', -1);
    EXPECT_TRUE(run.output.contains(lastLine)) << qPrintable(lastLine);
}

} // namespace

TEST_F(YearTest, TheSameSeedGivesTheSameJournalAndAnotherSeedAnotherOne)
{
    const Lived first = live({u"--seed"_s, u"11"_s, u"--days"_s, u"3"_s});
    const Lived again = live({u"--seed"_s, u"11"_s, u"--days"_s, u"3"_s});
    const Lived other = live({u"--seed"_s, u"12"_s, u"--days"_s, u"3"_s});

    for (const Lived& run : {first, again, other}) {
        EXPECT_EQ(run.exitCode, 0) << qPrintable(run.output);
        EXPECT_GT(run.journal.count('\n'), 3 * 40);
    }
    EXPECT_TRUE(first.output.startsWith(u"Seed: 11,"_s)) << qPrintable(first.output);
    EXPECT_EQ(first.journal, again.journal);
    EXPECT_NE(first.journal, other.journal);
}

TEST_F(YearTest, ABookingUnderAnotherIdentifierIsFound)
{
    expectViolation(plant(u"book-twice"_s), u"which no till has closed"_s);
}

TEST_F(YearTest, AConfirmationThatIsAnsweredAndNotBookedIsFound)
{
    expectViolation(plant(u"drop-one"_s), u", it holds "_s);
}

TEST_F(YearTest, AKopeckThatNoCheckTookIsFound)
{
    expectViolation(plant(u"drop-point"_s), u", it holds "_s);
}

TEST_F(YearTest, AConfirmationThatNeverGetsThroughIsFoundInTheEnd)
{
    const Lived run = plant(u"refuse-one"_s);
    EXPECT_EQ(run.exitCode, 1) << qPrintable(run.output);
    EXPECT_TRUE(run.output.contains(u" was never delivered: parked, HTTP 424"_s))
        << qPrintable(run.output);
}

TEST(YearJournal, NamesChecksInTheOrderOfTheirAppearance)
{
    year::Journal journal(nullptr);
    journal.write(u"0f8fad5b-d9cb-469f-a165-70867728950e and "
                  "7c9e6679-7425-40de-944b-e07fc1f90ae7"_s);
    journal.write(u"7c9e6679-7425-40de-944b-e07fc1f90ae7 again"_s);
    EXPECT_EQ(journal.lastLines(), (QStringList{u"C1 and C2"_s, u"C2 again"_s}));
    EXPECT_EQ(journal.nameOf(u"0f8fad5b-d9cb-469f-a165-70867728950e"_s), u"C1"_s);
}

TEST(YearJournal, KeepsTheLastTwentyLinesAndWritesAllOfThem)
{
    QBuffer file;
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    year::Journal journal(&file);
    for (int i = 1; i <= 25; ++i) {
        journal.write(QString::number(i));
    }
    EXPECT_EQ(journal.lastLines().size(), 20);
    EXPECT_EQ(journal.lastLines().first(), u"6"_s);
    EXPECT_EQ(journal.lines(), 25);
    EXPECT_EQ(file.data().count('\n'), 25);
}

TEST(YearJournal, OneOtherLetterGivesAnotherDigest)
{
    year::Journal one(nullptr);
    year::Journal two(nullptr);
    one.write(u"a"_s);
    two.write(u"b"_s);
    EXPECT_NE(one.digest(), two.digest());
}
