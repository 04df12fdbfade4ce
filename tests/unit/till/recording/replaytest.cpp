// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the till records of real flows, and what a replay makes of it.

#include "tests/unit/till/recording/recordedshop.h"

#include <QFileInfo>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

using ReplayTest = RecordedShop;

QString outcomes(const QJsonValue& record)
{
    QStringList texts;
    const QJsonArray sent = record.toObject().value(u"sent"_s).toArray();
    for (const auto& one : sent) {
        texts.append(one.toObject().value(u"call"_s).toString() + u' ' +
                     one.toObject().value(u"outcome"_s).toString());
    }
    return texts.join(u", "_s);
}

} // namespace

TEST_F(ReplayTest, RealFlowsAreRecordedAndReplayedIdentically)
{
    EXPECT_EQ(till({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"30"_s}).exitCode, 0);
    sellWithPoints();
    EXPECT_EQ(till({u"return"_s, u"return.toml"_s}).exitCode, 0);
    {
        const auto work = startTill();
        work->command(u"open sale.toml"_s);
        work->command(u"request"_s);
        work->command(u"points 33.33"_s);
        work->command(u"suspend"_s);
    }
    {
        const auto work = startTill();
        work->command(u"restore last"_s);
        work->command(u"points 20"_s);
        EXPECT_TRUE(work->command(u"close"_s).endsWith(u"ok\n"_s)) << qPrintable(work->output());
    }
    stopServer();
    EXPECT_EQ(till({u"sell"_s, u"sale.toml"_s}).exitCode, 3);

    const QJsonArray records = listed();
    ASSERT_EQ(records.size(), 6);
    const QString asked = u"identifyByCard 200, request 200"_s;
    EXPECT_EQ(outcomes(records.at(0)), asked + u", commit queued"_s);
    EXPECT_EQ(outcomes(records.at(1)), asked + u", commit queued"_s);
    EXPECT_EQ(outcomes(records.at(2)), u"request 200, commit queued"_s);
    EXPECT_EQ(outcomes(records.at(3)), asked);
    EXPECT_EQ(outcomes(records.at(4)), u"request 200, commit queued"_s);
    EXPECT_EQ(outcomes(records.at(5)).section(u' ', 0, 0), u"identifyByCard"_s);

    const QStringList before = files();
    const RunResult all = replay(u"all"_s);
    EXPECT_EQ(all.exitCode, 0) << qPrintable(all.output);
    EXPECT_EQ(all.output.count(u"identical"_s), 6) << qPrintable(all.output);
    EXPECT_TRUE(all.output.contains(u"Replaying: 6 of 6\n"_s)) << qPrintable(all.output);
    EXPECT_FALSE(replay(u"1"_s).output.contains(u"Replaying"_s)) << "one has no way to show";
    EXPECT_FALSE(replay(u"all"_s, {u"--quiet"_s}).output.contains(u"Replaying"_s));
    EXPECT_EQ(files(), before) << "a replay leaves nothing behind";
}

TEST_F(ReplayTest, AnExportedFileIsReplayedWhereThereIsNothingElse)
{
    sellWithPoints();
    const RunResult exported = till({u"log"_s, u"export"_s, u"1"_s, u"case.jsonl"_s});
    EXPECT_EQ(exported.exitCode, 0) << qPrintable(exported.output);
    EXPECT_EQ(QFileInfo(path(u"case.jsonl"_s)).permissions() &
                  (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther),
              QFile::Permissions());
    EXPECT_EQ(till({u"log"_s, u"export"_s, u"1"_s, u"case.jsonl"_s}).exitCode, 1)
        << "an export overwrites nothing";
    stopServer();
    QDir elsewhere(path(u"elsewhere"_s));
    ASSERT_TRUE(elsewhere.mkpath(u"."_s));
    ASSERT_TRUE(QFile::rename(path(u"case.jsonl"_s), elsewhere.filePath(u"case.jsonl"_s)));

    const QStringList arguments{u"log"_s, u"replay"_s, u"case.jsonl"_s, u"--plugin"_s,
                                QStringLiteral(ORVA_PLUGIN)};
    const RunResult replayed = runProgram(QStringLiteral(ORVA_TILL), arguments, elsewhere.path());

    EXPECT_EQ(replayed.exitCode, 0) << qPrintable(replayed.output);
    EXPECT_TRUE(replayed.output.contains(u"identical"_s)) << qPrintable(replayed.output);
    EXPECT_EQ(elsewhere.entryList(QDir::Files | QDir::Hidden), QStringList{u"case.jsonl"_s});
}

TEST_F(ReplayTest, AnExportCountsWhatItHasWritten)
{
    sellWithPoints();
    sellWithPoints();
    sellWithPoints();
    writeFile(recordFile(1), readFile(recordFile(1)).left(20)); // cut off in its first line
    const QString third = readFile(recordFile(3));
    writeFile(recordFile(3), third.left(third.size() - 5)); // in its last
    const QString header = readFile(recordFile(2)).section(u'\n', 0, 0);
    writeFile(recordFile(5), QString(header).replace(u"\"number\":2"_s, u"\"number\":5"_s));
    writeFile(recordFile(7), u"{}\n"_s);
    writeFile(u"records/7.jsonl"_s, readFile(recordFile(2)));

    const RunResult exported = till({u"log"_s, u"export"_s, u"all"_s, u"case.jsonl"_s});

    EXPECT_EQ(exported.exitCode, 0) << qPrintable(exported.output);
    EXPECT_TRUE(exported.output.startsWith(u"2 records are in case.jsonl."_s))
        << qPrintable(exported.output);
    EXPECT_EQ(readFile(u"case.jsonl"_s),
              readFile(recordFile(2)) + third.left(third.lastIndexOf(u'\n', -2) + 1));
    EXPECT_EQ(till({u"log"_s, u"export"_s, u"7"_s, u"seven.jsonl"_s}).exitCode, 1);
}

TEST_F(ReplayTest, AnExportThatDoesNotFitLeavesNothingBehind)
{
    sellWithPoints();

    const RunResult exported =
        runProgram(u"bash"_s,
                   {u"-c"_s, u"trap '' XFSZ; ulimit -f 2; exec \"$@\""_s, u"bash"_s,
                    QStringLiteral(ORVA_TILL), u"log"_s, u"export"_s, u"all"_s, u"case.jsonl"_s},
                   folder());

    EXPECT_EQ(exported.exitCode, 1) << qPrintable(exported.output);
    EXPECT_TRUE(exported.output.startsWith(u"orva-till: case.jsonl cannot be written ("_s))
        << qPrintable(exported.output);
    EXPECT_FALSE(QFileInfo::exists(path(u"case.jsonl"_s)));
}

TEST_F(ReplayTest, AReplayInAnotherTimeZoneSendsTheSame)
{
    sellWithPoints();

    const RunResult replayed = runProgram(
        u"env"_s,
        {u"TZ=Asia/Vladivostok"_s, QStringLiteral(ORVA_TILL), u"log"_s, u"replay"_s, u"1"_s},
        folder());

    EXPECT_EQ(replayed.exitCode, 0) << qPrintable(replayed.output);
}

TEST_F(ReplayTest, ADamagedRecordLeavesTheOthersReadable)
{
    sellWithPoints();
    sellWithPoints();
    const QString record = readFile(recordFile(1));
    writeFile(recordFile(1), record.mid(record.size() / 2));

    const RunResult list = till({u"log"_s, u"list"_s});

    EXPECT_EQ(list.exitCode, 0) << qPrintable(list.output);
    EXPECT_TRUE(list.output.contains(u"000001.jsonl, line 1"_s)) << qPrintable(list.output);
    EXPECT_TRUE(list.output.contains(u"  2.1  "_s)) << qPrintable(list.output);
}

TEST_F(ReplayTest, AnEditedRequestIsNamedByItsElementPath)
{
    sellWithPoints();
    QString edited = readFile(recordFile(1));
    const QString total = u"<total>68.77</total>"_s;
    // of the line of that call, the last one is that of the request
    const qsizetype end = edited.indexOf(u'\n', edited.indexOf(u"\"call\":\"request\""_s));
    const qsizetype place = edited.lastIndexOf(total, end);
    ASSERT_GE(place, 0);
    edited.replace(place, total.size(), u"<total>68.78</total>"_s);
    writeFile(u"edited.jsonl"_s, edited);

    const RunResult replayed = replay(u"edited.jsonl"_s);

    EXPECT_EQ(replayed.exitCode, 4) << qPrintable(replayed.output);
    EXPECT_TRUE(replayed.output.contains(
        u"call 4, request: sent[1]/exchange/request /RawCheck/items/RawItem[2]/total (line 24): "
        "recorded \"68.78\", now \"68.77\""_s))
        << qPrintable(replayed.output);
    EXPECT_TRUE(replayed.output.contains(u"1 of 18 calls differ"_s)) << qPrintable(replayed.output);
}

TEST_F(ReplayTest, AChangedDocumentMakesThePlugInSendSomethingElse)
{
    sellWithPoints();
    QString edited = readFile(recordFile(1));
    edited.replace(u"\"price\":149.9"_s, u"\"price\":150.9"_s);
    writeFile(u"edited.jsonl"_s, edited);

    const RunResult replayed = replay(u"edited.jsonl"_s);

    EXPECT_EQ(replayed.exitCode, 4) << qPrintable(replayed.output);
    EXPECT_TRUE(replayed.output.contains(
        u"/RawCheck/items/RawItem[1]/price (line 14): recorded \"149.9\", now \"150.9\""_s))
        << qPrintable(replayed.output);
}

TEST_F(ReplayTest, AnotherPlugInIsFoundOut)
{
    sellWithPoints();

    const RunResult replayed =
        replay(u"1"_s, {u"--plugin"_s, QStringLiteral(ORVA_OTHER_PLUGIN), u"--json"_s});

    EXPECT_EQ(replayed.exitCode, 4) << qPrintable(replayed.output);
    EXPECT_TRUE(replayed.output.contains(u"/RawCheck/items/RawItem[1]/quantity"_s))
        << qPrintable(replayed.output);
    EXPECT_TRUE(replayed.output.contains(u"2.001"_s)) << qPrintable(replayed.output);
    EXPECT_TRUE(replayed.output.contains(u"\"sameBuild\": false"_s)) << qPrintable(replayed.output);
    EXPECT_FALSE(replay(u"1"_s).output.contains(u"another build"_s));
    EXPECT_TRUE(replay(u"1"_s, {u"--plugin"_s, QStringLiteral(ORVA_OTHER_PLUGIN)})
                    .output.contains(u"another build"_s));
}

TEST_F(ReplayTest, RecordsHoldNoCredentialsAndListsNoWholeCard)
{
    sellWithPoints();

    const QString record = readFile(recordFile(1));
    EXPECT_TRUE(record.contains(u"2200000000017"_s)) << "a replay needs the whole number";
    for (const QString& secret :
         {u"Authorization"_s, u"secret"_s, u"e5e9fa1b"_s, u"ZTVlOWZh"_s, u"Basic"_s}) {
        EXPECT_FALSE(record.contains(secret, Qt::CaseInsensitive)) << qPrintable(secret);
    }
    const QFileInfo file(path(recordFile(1)));
    EXPECT_EQ(file.permissions() &
                  (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther),
              QFile::Permissions());
    for (const QStringList& command :
         {QStringList{u"log"_s, u"list"_s}, QStringList{u"log"_s, u"list"_s, u"--json"_s},
          QStringList{u"log"_s, u"show"_s, u"1"_s}}) {
        const RunResult shown = till(command);
        EXPECT_EQ(shown.exitCode, 0) << qPrintable(shown.output);
        EXPECT_FALSE(shown.output.contains(u"2200000000017"_s)) << qPrintable(shown.output);
        EXPECT_TRUE(shown.output.contains(u"****0017"_s)) << qPrintable(shown.output);
    }
}

TEST_F(ReplayTest, ShowPutsTheRequestBesideItsAnswer)
{
    sellWithPoints();

    const RunResult shown = till({u"log"_s, u"show"_s, u"1.2"_s});

    EXPECT_EQ(shown.exitCode, 0) << qPrintable(shown.output);
    EXPECT_TRUE(shown.output.contains(u"request at "_s)) << qPrintable(shown.output);
    EXPECT_FALSE(shown.output.contains(u"identifyByCard at "_s)) << qPrintable(shown.output);
    bool besideEachOther = false;
    const QStringList lines = shown.output.split(u'\n');
    for (const QString& line : lines) {
        besideEachOther = besideEachOther || line.count(u"<RawCheck>"_s) == 2;
    }
    EXPECT_TRUE(besideEachOther) << qPrintable(shown.output);
}

TEST_F(ReplayTest, ARecordingThatCannotBeWrittenDisturbsNoSaleAndIsSaidOnce)
{
    writeFile(u"records"_s, u"a file where the folder should be"_s);

    const auto work = startTill();
    for (int i = 0; i < 2; ++i) {
        work->command(u"open sale.toml"_s);
        work->command(u"points all"_s);
        EXPECT_TRUE(work->command(u"close"_s).endsWith(u"ok\n"_s)) << qPrintable(work->output());
    }

    EXPECT_EQ(work->output().count(u"The recording has a gap"_s), 1) << qPrintable(work->output());
}

TEST_F(ReplayTest, WithoutARecordingItIsSaidWhatToSwitchOn)
{
    writeConfig();

    const RunResult list = till({u"log"_s, u"list"_s});

    EXPECT_EQ(list.exitCode, 2);
    EXPECT_TRUE(list.output.contains(u"[recording]"_s)) << qPrintable(list.output);
}
