// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "input/readfile.h"

#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using input::FileError;

namespace {

class ReadFile : public ::testing::Test
{
protected:
    QString write(const QByteArray& content) const
    {
        const QString name = folder.filePath(u"file"_s);
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return name;
    }

    /// Nothing where the file was read.
    static std::optional<FileError::Kind> refusalOf(const QString& file, qint64 limit = 10)
    {
        try {
            input::readFile(file, limit);
        } catch (const FileError& error) {
            return error.kind();
        }
        return std::nullopt;
    }

    QTemporaryDir folder{QDir::tempPath() + u"/ReadFile-XXXXXX"_s};
};

} // namespace

TEST_F(ReadFile, readsARegularFileUpToTheLimit)
{
    EXPECT_EQ(input::readFile(write(""), 0), QByteArray());
    EXPECT_EQ(input::readFile(write(QByteArray("a\0b\n", 4)), 4), QByteArray("a\0b\n", 4));
    EXPECT_EQ(refusalOf(write("0123456789")), std::nullopt);
    EXPECT_EQ(refusalOf(write("0123456789a")), FileError::Kind::TooLarge);
}

TEST_F(ReadFile, followsLinks)
{
    const QString link = folder.filePath(u"link"_s);
    ASSERT_TRUE(QFile::link(write("content"), link));
    EXPECT_EQ(input::readFile(link, 10), QByteArray("content"));
}

TEST_F(ReadFile, tellsWhyAFileCannotBeRead)
{
    try {
        input::readFile(folder.filePath(u"absent"_s), 10);
        FAIL() << "an absent file was read";
    } catch (const FileError& error) {
        EXPECT_EQ(error.kind(), FileError::Kind::Unreadable);
        EXPECT_EQ(error.reason(), u"No such file or directory"_s);
    }
}

TEST_F(ReadFile, refusesWhatMightNeverEnd)
{
    EXPECT_EQ(refusalOf(u"/dev/zero"_s), FileError::Kind::NotRegular);
    EXPECT_EQ(refusalOf(u"/dev/null"_s), FileError::Kind::NotRegular);
    EXPECT_EQ(refusalOf(folder.path()), FileError::Kind::NotRegular);
}

TEST_F(ReadFile, waitsForNoWriterOfAPipe)
{
    const QString pipe = folder.filePath(u"pipe"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(refusalOf(pipe), FileError::Kind::NotRegular);
}

TEST_F(ReadFile, readsNoMoreThanTheLimitOfAFileThatIsSaidToBeEmpty)
{
    // files of the kernel have a size of 0 and content all the same
    EXPECT_EQ(refusalOf(u"/proc/self/maps"_s, 100), FileError::Kind::TooLarge);
    EXPECT_FALSE(input::readFile(u"/proc/self/comm"_s, 100).isEmpty());
}
