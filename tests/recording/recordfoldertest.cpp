// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The bounds of the folder of records, and records that are damaged.

#include "till/recording/recordfolder.h"

#include "till/failure.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using till::Record;
using till::RecordFolder;

namespace {

class RecordFolderTest : public ::testing::Test
{
protected:
    QString path() const { return scene.filePath(u"records"_s); }
    RecordFolder::Bounds bounds(qint64 bytes, int days = 30) const { return {bytes, days}; }
    /// A record of about so many bytes.
    static void write(RecordFolder& folder, qsizetype bytes)
    {
        folder.begin({{u"format"_s, u"orva-till recording"_s}, {u"version"_s, 1}});
        folder.add({{u"call"_s, u"request"_s}, {u"padding"_s, QString(bytes, u'x')}});
    }
    qint64 bytesIn(const RecordFolder& folder) const
    {
        qint64 sum = 0;
        const auto files = folder.files();
        for (const auto& file : files) {
            sum += file.bytes;
        }
        return sum;
    }
    QList<int> numbers(const RecordFolder& folder) const
    {
        QList<int> all;
        const auto files = folder.files();
        for (const auto& file : files) {
            all.append(file.number);
        }
        return all;
    }

    QTemporaryDir scene{QDir::tempPath() + u"/RecordFolderTest-XXXXXX"_s};
};

} // namespace

TEST_F(RecordFolderTest, theOldestRecordsMakeRoomForNewOnes)
{
    RecordFolder folder(path(), bounds(10'000));
    for (int i = 0; i < 20; ++i) {
        write(folder, 3000);
        EXPECT_LE(bytesIn(folder), 10'000);
    }
    EXPECT_EQ(numbers(folder), (QList<int>{18, 19, 20}));
}

TEST_F(RecordFolderTest, aRecordThatAloneIsTooLargeIsGivenUp)
{
    RecordFolder folder(path(), bounds(10'000));
    EXPECT_THROW(write(folder, 20'000), till::Failure);
    folder.add({{u"call"_s, u"after the gap"_s}}); // goes nowhere
    EXPECT_LE(bytesIn(folder), 10'000);
    write(folder, 3000);
    EXPECT_EQ(folder.read(2).calls.size(), 1);
}

TEST_F(RecordFolderTest, aFullDiskIsCalledSo)
{
    RecordFolder folder(path(), bounds(100'000));
    write(folder, 10);
    // takes a part of what is written, as a full disk does
    const auto handler = ::signal(SIGXFSZ, SIG_IGN);
    struct rlimit usual
    {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &usual), 0);
    const struct rlimit small
    {
        1000, usual.rlim_max
    };
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    QString said;
    try {
        write(folder, 3000);
    } catch (const till::Failure& failure) {
        said = failure.text();
    }
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &usual), 0);
    ::signal(SIGXFSZ, handler);
    EXPECT_EQ(said, u"%1/000002.jsonl cannot be written (the disk is full)"_s.arg(path()));
    EXPECT_EQ(folder.read(2).calls.size(), 0) << "half a line is left";
}

TEST_F(RecordFolderTest, oldRecordsGoWhenANewOneBegins)
{
    RecordFolder folder(path(), bounds(1'000'000, 7));
    write(folder, 10);
    write(folder, 10);
    QFile old(path() + u"/000001.jsonl"_s);
    ASSERT_TRUE(old.open(QIODevice::ReadWrite));
    ASSERT_TRUE(old.setFileTime(QDateTime::currentDateTime().addDays(-8),
                                QFileDevice::FileModificationTime));
    old.close();
    RecordFolder later(path(), bounds(1'000'000, 7));
    write(later, 10);
    EXPECT_EQ(numbers(later), (QList<int>{2, 3}));
}

TEST_F(RecordFolderTest, twoTillsShareAFolder)
{
    RecordFolder one(path(), bounds(1'000'000));
    RecordFolder other(path(), bounds(1'000'000));
    one.begin({{u"format"_s, u"orva-till recording"_s}});
    other.begin({{u"format"_s, u"orva-till recording"_s}});
    one.add({{u"call"_s, u"one"_s}});
    other.add({{u"call"_s, u"other"_s}});
    EXPECT_EQ(one.read(1).calls.first().value(u"call"_s), u"one"_s);
    EXPECT_EQ(one.read(2).calls.first().value(u"call"_s), u"other"_s);
}

TEST_F(RecordFolderTest, aRecordThatWasCutOffIsGoodUpToItsLastWholeLine)
{
    RecordFolder folder(path(), bounds(1'000'000));
    write(folder, 10);
    write(folder, 10);
    QFile file(path() + u"/000001.jsonl"_s);
    ASSERT_TRUE(file.resize(file.size() - 5));
    const Record record = folder.read(1);
    EXPECT_TRUE(record.cut);
    EXPECT_TRUE(record.calls.isEmpty());
    EXPECT_FALSE(folder.read(2).cut);
}

TEST_F(RecordFolderTest, whatIsNoRecordingIsRefusedWithItsLine)
{
    const auto refusal = [](const QByteArray& content) {
        try {
            Record::parse(content, u"case.jsonl"_s);
        } catch (const till::Failure& failure) {
            return failure.text();
        }
        return QString();
    };
    EXPECT_EQ(refusal("{\"call\":\"request\"}\n"), u"case.jsonl, line 1: this is no recording."_s);
    EXPECT_EQ(refusal("type = \"sale\"\n"), u"case.jsonl, line 1: this is no recording."_s);
    const QByteArray head = "{\"format\":\"orva-till recording\",\"version\":1}\n";
    EXPECT_EQ(refusal(head + "half a li\n" + head),
              u"case.jsonl, line 2: this is no line of a record."_s);
    EXPECT_EQ(refusal(head + "{\"document\":3,\"content\":{}}\n"),
              u"case.jsonl, line 2: the documents are not in order."_s);
    EXPECT_TRUE(
        refusal("{\"format\":\"orva-till recording\",\"version\":99}\n").contains(u"newer till"_s));
}
