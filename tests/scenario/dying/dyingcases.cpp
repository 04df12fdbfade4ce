// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include <QtGlobal>

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace {

/// Never ends; the compiler must not see that.
int deep(volatile int* level)
{
    volatile char frame[4096] = {};
    frame[0] = char(*level);
    *level = *level + 1;
    return *level < 0 ? frame[0] : deep(level) + frame[0];
}

TEST(Dying, lives) {}

TEST(Dying, readsWhatIsNotThere)
{
    volatile int* volatile nowhere = nullptr;
    // cppcheck-suppress nullPointer
    EXPECT_EQ(*nowhere, 0);
}

TEST(Dying, isKilledBySignal)
{
    ::raise(SIGSEGV);
}

TEST(Dying, aborts)
{
    std::abort();
}

TEST(Dying, throwsWhereNobodyCatches)
{
    std::thread([] { throw std::runtime_error("nobody catches"); }).join();
}

TEST(Dying, meetsAFatalMessage)
{
    qFatal("the end");
}

TEST(Dying, exits)
{
    std::exit(0);
}

TEST(Dying, goesTooDeep)
{
    volatile int level = 0;
    EXPECT_EQ(deep(&level), 0);
}

TEST(Dying, hangs)
{
    for (;;) {
        ::pause();
    }
}

class DyingBefore : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { std::abort(); }
};

TEST_F(DyingBefore, itsFirstTest) {}

} // namespace
