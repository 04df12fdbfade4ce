// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/output.h"

#include <QFile>
#include <QTemporaryFile>

#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <memory>
#include <pty.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;
using console::Output;

namespace {

struct Closed
{
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, Closed>;

class OutputTest : public ::testing::Test
{
protected:
    OutputTest() { EXPECT_TRUE(file.open()); }
    Stream stream() const { return Stream(std::fopen(file.fileName().toUtf8().constData(), "w")); }
    QString content() const
    {
        QFile reader(file.fileName());
        EXPECT_TRUE(reader.open(QIODevice::ReadOnly));
        return QString::fromUtf8(reader.readAll());
    }

    QTemporaryFile file;
};

const QString escapes = u"\033[31mred\033]0;title\a\u202e"_s;
const QString shown = u"\\u001b[31mred\\u001b]0;title\\u0007\\u202e"_s;

} // namespace

TEST_F(OutputTest, letsNoEscapeSequenceThroughByAnyWay)
{
    {
        const Stream target = stream();
        Output out(target.get());
        out.write(escapes + u"\nnext\n"_s);
        out.line(escapes + u"\nnext"_s);
        out.line(u"note:"_s, Output::Colour::Yellow, escapes + u"\nnext"_s);
        out.draw({{escapes}, {u"bar"_s, Output::Colour::Green}});
        EXPECT_TRUE(out.isWhole());
        EXPECT_EQ(out.trouble(), QString());
    }
    EXPECT_EQ(content(), shown + u"\nnext\n"_s + shown + u" next\nnote: "_s + shown +
                             u" next\n\r"_s + shown + u"bar\033[K"_s);
}

TEST_F(OutputTest, hasItsOwnColoursOnATerminalAndNobodyElses)
{
    qputenv("TERM", "xterm");
    qunsetenv("NO_COLOR");
    termios raw{};
    ::cfmakeraw(&raw);
    int readEnd = -1;
    int writeEnd = -1;
    ASSERT_EQ(::openpty(&readEnd, &writeEnd, nullptr, &raw, nullptr), 0);
    {
        const Stream target(::fdopen(writeEnd, "w"));
        Output out(target.get());
        out.line(u"note:"_s, Output::Colour::Yellow, escapes);
    }
    QByteArray bytes(4096, '\0');
    bytes.truncate(std::max<qsizetype>(0, ::read(readEnd, bytes.data(), size_t(bytes.size()))));
    ::close(readEnd);
    EXPECT_EQ(QString::fromUtf8(bytes), u"\033[33mnote:\033[0m "_s + shown + u'\n');
}

TEST(OutputFailing, isToldOnceTheDiskIsFull)
{
    const Stream full(std::fopen("/dev/full", "w"));
    Output out(full.get());
    EXPECT_TRUE(out.isWhole());
    out.line(u"lost"_s);
    EXPECT_FALSE(out.isWhole());
    EXPECT_FALSE(out.isUnread());
    EXPECT_EQ(out.trouble(),
              u"the standard output cannot be written (%1)"_s.arg(qt_error_string(ENOSPC)));
}

TEST(OutputFailing, isToldWhenTheReaderHasGone)
{
    const auto former = std::signal(SIGPIPE, SIG_IGN);
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ::close(ends[0]);
    {
        const Stream pipe(::fdopen(ends[1], "w"));
        Output out(pipe.get());
        out.line(u"lost"_s);
        EXPECT_FALSE(out.isWhole());
        EXPECT_TRUE(out.isUnread());
    }
    std::signal(SIGPIPE, former);
}

TEST_F(OutputTest, keepsLinesOfSeveralThreadsApart)
{
    constexpr int threads = 4;
    constexpr int each = 500;
    {
        const Stream target = stream();
        Output out(target.get());
        std::vector<std::thread> writers;
        for (int i = 0; i < threads; ++i) {
            writers.emplace_back([&out, i] {
                for (int line = 0; line < each; ++line) {
                    out.line(QString(60, QChar(u'a' + i)));
                }
            });
        }
        for (std::thread& writer : writers) {
            writer.join();
        }
    }
    const QStringList lines = content().split(u'\n');
    ASSERT_EQ(lines.size(), threads * each + 1);
    for (const QString& line : lines.first(threads * each)) {
        EXPECT_EQ(line, QString(60, line.isEmpty() ? u' ' : line.front()));
    }
}
