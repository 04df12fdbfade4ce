// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/progress.h"

#include "tests/unit/till/printing.h"
#include "tests/unit/till/readback.h"
#include "till/screen/output.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tests::Pipe;
using tests::Terminal;
using till::Output;
using till::Progress;

namespace {

class ProgressTest : public ::testing::Test
{
protected:
    ProgressTest()
    {
        qputenv("TERM", "xterm");
        qputenv("NO_COLOR", "1");
    }
    ~ProgressTest() override { qunsetenv("NO_COLOR"); }
};

} // namespace

TEST_F(ProgressTest, isABarOnATerminalThatIsGoneAtTheEnd)
{
    const Terminal terminal(40);
    Output out(terminal.stream);
    {
        Progress progress(out, u"Delivering"_s);
        progress.show(1, 4);
        progress.show(4, 4);
    }
    // 40 columns less the last one, the title, the figures and what stands around the bar
    EXPECT_EQ(terminal.text(), u"\rDelivering [####...............] 1 of 4\033[K"
                               "\rDelivering [###################] 4 of 4\033[K"
                               "\r\033[K"_s);
}

TEST_F(ProgressTest, makesRoomForALineAndIsDrawnAnewAtOnce)
{
    const Terminal terminal(40);
    Output out(terminal.stream);
    Progress progress(out, u"Delivering"_s);
    progress.clear(); // nothing stands there yet
    EXPECT_EQ(terminal.text(), QString());
    progress.show(1, 4);
    terminal.text();
    progress.clear();
    EXPECT_EQ(terminal.text(), u"\r\033[K"_s);
    progress.clear();
    EXPECT_EQ(terminal.text(), QString());
    progress.show(2, 4);
    EXPECT_EQ(terminal.text(), u"\rDelivering [#########..........] 2 of 4\033[K"_s);
}

TEST_F(ProgressTest, isDrawnNoMoreOftenThanPeopleCanFollow)
{
    const Terminal terminal(80);
    Output out(terminal.stream);
    constexpr int messages = 10'000;
    Progress progress(out, u"Delivering"_s);
    for (int i = 1; i <= 40; ++i) {
        progress.show(i, messages);
    }
    progress.show(messages, messages);
    const QString text = terminal.text();
    EXPECT_LT(text.count(u'\r'), 40) << text.toStdString();
    EXPECT_TRUE(text.contains(u"10000 of 10000"_s)) << text.toStdString();
}

TEST_F(ProgressTest, hasColoursUnlessTheyAreNotWanted)
{
    const Terminal terminal(80);
    Output out(terminal.stream);
    Progress(out, u"Delivering"_s).show(1, 1);
    EXPECT_FALSE(terminal.text().contains(u"\033[32m"_s));
    qunsetenv("NO_COLOR");
    Progress(out, u"Delivering"_s).show(1, 1);
    EXPECT_TRUE(terminal.text().contains(u"\033[32m####"_s));
}

TEST_F(ProgressTest, isALineForEachTenthElsewhere)
{
    const Pipe pipe;
    Output out(pipe.stream);
    {
        Progress progress(out, u"Delivering"_s);
        for (int i = 0; i <= 50; ++i) {
            progress.show(i, 50);
        }
    }
    QString expected;
    for (int i = 5; i <= 50; i += 5) {
        expected += u"Delivering: %1 of 50\n"_s.arg(i);
    }
    EXPECT_EQ(pipe.text(), expected);
}

TEST_F(ProgressTest, isLinesOnATerminalThatCannotRedraw)
{
    qputenv("TERM", "dumb");
    const Terminal terminal(80);
    Output out(terminal.stream);
    Progress(out, u"Delivering"_s).show(1, 1);
    EXPECT_EQ(terminal.text(), u"Delivering: 1 of 1\n"_s);
}

TEST_F(ProgressTest, isNothingWhenTheOutputIsQuietOrNothingIsToDo)
{
    const Terminal terminal(80);
    Output out(terminal.stream);
    Progress(out, u"Delivering"_s).show(0, 0);
    out.setQuiet(true);
    Progress(out, u"Delivering"_s).show(1, 2);
    EXPECT_EQ(terminal.text(), QString());
}

TEST_F(ProgressTest, countsWhatCameInMeanwhile)
{
    const Pipe pipe;
    Output out(pipe.stream);
    Progress(out, u"Delivering"_s).show(3, 2);
    EXPECT_EQ(pipe.text(), u"Delivering: 3 of 3\n"_s);
}

TEST_F(ProgressTest, theOutputMarksNotesAndFailuresOnAColouredTerminalOnly)
{
    const Terminal terminal(80);
    Output out(terminal.stream);
    out.notes({u"a"_s});
    out.failure(u"b"_s);
    EXPECT_EQ(terminal.text(), u"note: a\norva-till: b\n"_s);
    qunsetenv("NO_COLOR");
    out.notes({u"a"_s});
    out.failure(u"b"_s);
    EXPECT_EQ(terminal.text(), u"\033[33mnote:\033[0m a\n\033[31morva-till:\033[0m b\n"_s);
}
