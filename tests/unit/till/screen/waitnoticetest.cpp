// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/waitnotice.h"

#include "tests/unit/till/printing.h"
#include "tests/unit/till/readback.h"
#include "till/screen/output.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using tests::Pipe;
using tests::Terminal;
using till::Output;
using till::WaitNotice;

namespace {

const QByteArray lineEnd = "\033[K";
const QString cleared = u"\r\033[K"_s;

class WaitNoticeTest : public ::testing::Test
{
protected:
    WaitNoticeTest() { qputenv("TERM", "xterm"); }
};

} // namespace

TEST_F(WaitNoticeTest, saysAfterASecondForWhomAndHowLongAtMostAndIsGoneAtTheEnd)
{
    const Terminal terminal(80);
    Output out(terminal.stream);
    WaitNotice notice(out);
    QElapsedTimer clock;
    clock.start();
    notice.requestBegins(u"loyalty.test"_s, 0ms, 5s);
    EXPECT_EQ(terminal.textUpTo(lineEnd), u"\rWaiting for loyalty.test, 4 s at most\033[K"_s);
    EXPECT_GE(clock.elapsed(), 1000);
    EXPECT_LE(clock.elapsed(), 1900); // on a busy machine
    EXPECT_EQ(terminal.textUpTo(lineEnd), u"\rWaiting for loyalty.test, 3 s at most\033[K"_s);
    EXPECT_GE(clock.elapsed(), 2000);
    notice.requestEnded();
    EXPECT_EQ(terminal.text(), cleared);
    notice.requestEnded();
    EXPECT_EQ(terminal.text(), QString());
}

TEST_F(WaitNoticeTest, countsWhatTheOperationHasWaitedBefore)
{
    const Terminal terminal(80);
    Output out(terminal.stream);
    WaitNotice notice(out);
    notice.requestBegins(u"loyalty.test"_s, 900ms, 5s);
    // 100 ms later; a whole second later it were 4 s
    EXPECT_EQ(terminal.textUpTo(lineEnd), u"\rWaiting for loyalty.test, 5 s at most\033[K"_s);
    notice.requestEnded();
    EXPECT_EQ(terminal.text(), cleared);
    notice.requestBegins(u"loyalty.test"_s, 1500ms, 3500ms);
    EXPECT_EQ(terminal.textUpTo(lineEnd), u"\rWaiting for loyalty.test, 4 s at most\033[K"_s);
}

TEST_F(WaitNoticeTest, saysNothingOfAQuickAnswer)
{
    const Terminal terminal(80);
    Output out(terminal.stream);
    WaitNotice notice(out);
    for (int i = 0; i < 3; ++i) {
        notice.requestBegins(u"loyalty.test"_s, 0ms, 5s);
        notice.requestEnded();
    }
    EXPECT_EQ(terminal.text(), QString());
}

TEST_F(WaitNoticeTest, fitsOnTheLine)
{
    const Terminal terminal(20);
    Output out(terminal.stream);
    WaitNotice notice(out);
    notice.requestBegins(u"loyalty.test"_s, 1s, 5s);
    EXPECT_EQ(terminal.textUpTo(lineEnd), u"\rWaiting for loyalty\033[K"_s);
}

TEST_F(WaitNoticeTest, isNothingElsewhereOrWhenTheOutputIsQuiet)
{
    const Pipe pipe;
    Output plain(pipe.stream);
    const Terminal terminal(80);
    Output quiet(terminal.stream);
    quiet.setQuiet(true);
    const Terminal loudTerminal(80);
    Output loud(loudTerminal.stream);
    WaitNotice notices[]{WaitNotice(plain), WaitNotice(quiet), WaitNotice(loud)};
    for (WaitNotice& notice : notices) {
        notice.requestBegins(u"loyalty.test"_s, 2s, 5s);
    }
    loudTerminal.textUpTo(lineEnd); // by now the others would have written as well
    for (WaitNotice& notice : notices) {
        notice.requestEnded();
    }
    EXPECT_EQ(pipe.text(), QString());
    EXPECT_EQ(terminal.text(), QString());
}
