// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A program that dies says in which test, whatever it dies of.

#include <QProcess>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

struct Death
{
    QProcess::ExitStatus status;
    int code = 0;
    std::string output;
};

Death run(const QString& filter)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"ORVA_CASE_SECONDS"_s, u"1"_s);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(ORVA_DYING_CASES), {u"--gtest_filter="_s + filter});
    process.waitForFinished(30'000);
    return {process.exitStatus(), process.exitCode(), process.readAll().toStdString()};
}

class DyingProgram : public ::testing::TestWithParam<const char*>
{};

TEST_P(DyingProgram, namesTheTestItDiedIn)
{
    const QString name = QString::fromLatin1(GetParam());
    const Death death = run(u"Dying.lives:Dying."_s + name);
    EXPECT_THAT(death.output, HasSubstr("[       OK ] Dying.lives"));
    EXPECT_THAT(death.output, HasSubstr("[   DIED   ] Dying." + name.toStdString() + " ("));
    EXPECT_TRUE(death.status == QProcess::CrashExit || death.code != 0) << death.output;
}

INSTANTIATE_TEST_SUITE_P(EachWay, DyingProgram,
                         ::testing::Values("readsWhatIsNotThere", "isKilledBySignal", "aborts",
                                           "throwsWhereNobodyCatches", "meetsAFatalMessage",
                                           "exits", "goesTooDeep", "hangs"),
                         [](const auto& test) { return std::string(test.param); });

TEST(DyingProgram, namesTheSuiteWhoseSetUpDies)
{
    const Death death = run(u"DyingBefore.*"_s);
    EXPECT_THAT(death.output, HasSubstr("[   DIED   ] DyingBefore."));
}

TEST(DyingProgram, saysNothingOfTheLiving)
{
    const Death death = run(u"Dying.lives"_s);
    EXPECT_EQ(death.status, QProcess::NormalExit);
    EXPECT_EQ(death.code, 0);
    EXPECT_THAT(death.output, Not(HasSubstr("DIED")));
}

} // namespace
