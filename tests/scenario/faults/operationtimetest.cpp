// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// However many questions an operation of the cashier takes, and whichever of them is answered late:
// it ends within the time-out and half a second.

#include "tests/scenario/faults/faultyserver.h"
#include "tests/scenario/faults/faultytill.h"
#include "tests/support/keptoutput.h"
#include "tests/support/logcapture.h"
#include "tests/support/testfolder.h"
#include "till/commands/program.h"
#include "till/screen/output.h"

#include <QElapsedTimer>
#include <QLoggingCategory>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using simulator::FaultKind;
using simulator::FaultRule;

namespace {

constexpr int halfASecond = 500;
constexpr int pairNumber = 200'000; // no pair of the table has it

/// How late each question is answered, and how many may be asked.
struct Lateness
{
    const char* name;
    std::vector<std::chrono::milliseconds> delays;
    int questions;
};

void PrintTo(const Lateness& row, std::ostream* out)
{
    *out << row.name;
}

class OperationTime : public ::testing::TestWithParam<Lateness>
{
protected:
    static FaultRule late(int question, std::chrono::milliseconds delay)
    {
        FaultRule rule;
        rule.fault.kind = FaultKind::Delay;
        rule.fault.duration = delay;
        rule.endpoint = u"precheck"_s;
        rule.firstRequest = question;
        return rule;
    }

    /// The last delay is that of all further questions.
    static std::vector<FaultRule> rules()
    {
        std::vector<FaultRule> rules;
        for (const std::chrono::milliseconds delay : GetParam().delays) {
            rules.insert(rules.begin(), late(static_cast<int>(rules.size()) + 1, delay));
        }
        return rules;
    }

    /// Runs a command of the program as a cashier would and returns how long it took.
    qint64 run(till::Command command)
    {
        till::Options options;
        options.command = command;
        options.configFile = folder.file(u"orva.toml"_s);
        options.configNamed = true;
        options.file = folder.file(u"sale.toml"_s);
        options.points = till::PointsChoice::all();
        QElapsedTimer clock;
        clock.start();
        EXPECT_EQ(till::Program(options, out, out).run(), till::ExitCode::WithoutLoyalty)
            << out.written.toStdString();
        return clock.elapsed();
    }

    const tests::LogSilence silence;
    TestFolder folder;
    FaultyServer server{folder.file(QString()), pairNumber, {}, 1};
    FaultyTill till{folder.file(QString()), server.address(), QString(), 1}; // writes the files
    tests::KeptOutput out;
};

} // namespace

TEST_P(OperationTime, EndsWithinTheTimeoutAndHalfASecond)
{
    for (const till::Command command : {till::Command::Check, till::Command::Sell}) {
        server.beginAll(rules());
        const qint64 milliseconds = run(command);
        EXPECT_LE(milliseconds, FaultyTill::timeoutMilliseconds + halfASecond);
        EXPECT_EQ(server.struck(), GetParam().questions);
    }
}

INSTANTIATE_TEST_SUITE_P(Late, OperationTime,
                         ::testing::Values(Lateness{"first", {5s}, 1},
                                           Lateness{"second", {1ms, 5s}, 2},
                                           Lateness{"both", {700ms, 5s}, 2},
                                           Lateness{"every", {600ms}, 2}),
                         [](const auto& row) { return std::string(row.param.name); });
