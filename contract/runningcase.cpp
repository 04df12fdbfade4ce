// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/runningcase.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <unistd.h>

namespace contract {
namespace {

constexpr std::array fatalSignals{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};

// Plain memory, since a signal may come at any time.
std::array<char, 512> running{};
std::array<struct sigaction, NSIG> earlier{};
std::array<char, 64 * 1024> stackOfHandlers{};
pid_t testsProcess = 0;

void tell(const char* text)
{
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text, std::strlen(text));
}

void tellRunning(const char* what)
{
    tell("\n[   DIED   ] ");
    tell(running.front() == '\0' ? "outside of any test" : running.data());
    tell(what);
    tell("\n");
}

void restore(int number)
{
    ::sigaction(number, &earlier.at(size_t(number)), nullptr);
}

void onFatalSignal(int number, siginfo_t* info, void* /*context*/)
{
    const int error = errno;
    tellRunning(number == SIGABRT ? " (aborted)" : " (by a fatal signal)");
    restore(number);
    errno = error;
    // what the processor has refused is tried again and comes to the earlier handler with all it is
    // told
    if (info->si_code <= 0) {
        ::raise(number);
    }
}

void onTimeOut(int /*number*/)
{
    tellRunning(" (took too long)");
    restore(SIGABRT);
    std::abort();
}

/// A test that ends the program has not passed, whatever code it ends with.
void onExit()
{
    if (running.front() != '\0' && ::getpid() == testsProcess) {
        std::fflush(stdout);
        tellRunning(" (called exit)");
        ::_exit(1);
    }
}

class CaseListener : public ::testing::EmptyTestEventListener
{
public:
    explicit CaseListener(unsigned secondsOfATest) : seconds(secondsOfATest) {}

    void OnTestSuiteStart(const ::testing::TestSuite& suite) override
    {
        note(suite.name(), nullptr);
    }

    void OnTestStart(const ::testing::TestInfo& test) override
    {
        note(test.test_suite_name(), test.name());
        ::alarm(seconds);
    }

    void OnTestEnd(const ::testing::TestInfo& test) override
    {
        ::alarm(0);
        note(test.test_suite_name(), nullptr);
    }

    void OnTestSuiteEnd(const ::testing::TestSuite& /*suite*/) override { running.front() = '\0'; }

private:
    static void note(const char* suite, const char* name)
    {
        std::snprintf(running.data(), running.size(), "%s.%s", suite,
                      name == nullptr ? "(before or after its tests)" : name);
    }

    unsigned seconds;
};

void listenTo(int number, void (*handler)(int, siginfo_t*, void*))
{
    struct sigaction action = {};
    action.sa_sigaction = handler;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    ::sigaction(number, &action, &earlier.at(size_t(number)));
}

} // namespace

void nameTheCaseThatDies(unsigned seconds)
{
    testsProcess = ::getpid();
    // a stack that has overflown holds no handler
    stack_t stack = {};
    stack.ss_sp = stackOfHandlers.data();
    stack.ss_size = stackOfHandlers.size();
    ::sigaltstack(&stack, nullptr);
    for (const int number : fatalSignals) {
        listenTo(number, onFatalSignal);
    }
    ::signal(SIGALRM, onTimeOut);
    std::atexit(onExit);
    ::testing::UnitTest::GetInstance()->listeners().Append(new CaseListener(seconds));
}

} // namespace contract
