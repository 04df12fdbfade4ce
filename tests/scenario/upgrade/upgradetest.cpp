// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What is installed is exchanged while a till is at work, as the package manager does it: the new
// file is written beside the old one and takes its name.

#include "tests/support/environmentvariable.h"
#include "tests/support/shop.h"
#include "tests/support/tillsettings.h"

#include <QDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// A shop whose till is installed in its folder: program, library and plug-in.
class Upgrade : public Shop
{
protected:
    void SetUp() override
    {
        Shop::SetUp();
        install();
        tests::TillSettings settings;
        settings.server = address;
        settings.timeoutSeconds = 5;
        settings.plugin = path(u"installed/liborva.so"_s);
        writeFile(u"orva.toml"_s, settings.toml());
    }

    /// Puts each file of the installation in the place of the one that is there.
    void install() const
    {
        ASSERT_TRUE(QDir(folder()).mkpath(u"installed"_s));
        exchange(u"installed/orva-till"_s, QStringLiteral(ORVA_TILL));
        exchange(u"installed/"_s + QStringLiteral(ORVA_HOST_LIBRARY_NAME),
                 QStringLiteral(ORVA_HOST_LIBRARY));
        exchange(u"installed/liborva.so"_s, QStringLiteral(ORVA_PLUGIN));
    }

    void exchange(const QString& name, const QString& source) const
    {
        const QString written = path(name + u".new"_s);
        ASSERT_TRUE(QFile::copy(source, written)) << qPrintable(source);
        ASSERT_EQ(std::rename(qPrintable(written), qPrintable(path(name))), 0);
    }

    std::unique_ptr<Program> startInstalled() const
    {
        const EnvironmentVariable libraries("LD_LIBRARY_PATH", path(u"installed"_s).toUtf8());
        return std::make_unique<Program>(path(u"installed/orva-till"_s), QStringList{u"work"_s},
                                         folder());
    }
    RunResult run(const QStringList& arguments) const
    {
        const EnvironmentVariable libraries("LD_LIBRARY_PATH", path(u"installed"_s).toUtf8());
        return runProgram(path(u"installed/orva-till"_s), arguments, folder());
    }

    static void expectDone(Program& working, const QStringList& commands)
    {
        for (const QString& command : commands) {
            const QString answer = working.command(command);
            EXPECT_TRUE(answer.endsWith(u"ok\n"_s)) << qPrintable(command + u": "_s + answer);
        }
    }

    /// Whether a process runs from files that have been exchanged since.
    static bool runsFromOldFiles(const Program& program)
    {
        QFile maps(u"/proc/%1/maps"_s.arg(program.processId()));
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("liborva.so (deleted)");
    }

    /// Waits until a till has delivered everything, and finds it and the server agreeing.
    void expectEverythingDelivered(Program& working, int checks) const
    {
        expectDone(working, {u"wait 60"_s});
        EXPECT_EQ(undelivered(), 0);
        EXPECT_EQ(tillBooks(), serverBooks());
        EXPECT_EQ(tillBooks().count(u'\n'), 1 + checks) << qPrintable(tillBooks());
    }
};

} // namespace

TEST_F(Upgrade, anExchangedPluginIsTakenIntoUseAtTheNextStart)
{
    const std::unique_ptr<Program> working = startInstalled();
    expectDone(*working, {u"open sale.toml"_s});
    writeFile(u"other"_s, u"no plug-in at all"_s);
    exchange(u"installed/liborva.so"_s, path(u"other"_s));
    expectDone(*working, {u"points 10"_s, u"close"_s, u"open sale.toml"_s, u"close"_s});
    EXPECT_TRUE(runsFromOldFiles(*working));
    working->send(u"quit"_s);
    EXPECT_EQ(working->waitForEnd(), 0);

    const RunResult refused = run({u"sell"_s, u"sale.toml"_s});
    EXPECT_NE(refused.exitCode, 0);
    EXPECT_TRUE(refused.output.contains(u"is no plug-in"_s)) << qPrintable(refused.output);
    install();
    const std::unique_ptr<Program> again = startInstalled();
    expectDone(*again, {u"open sale.toml"_s, u"close"_s});
    expectEverythingDelivered(*again, 3);
}

TEST_F(Upgrade, aSaleUnderWayAndAQueueThatWaitsOutliveTheExchangeOfEverything)
{
    const std::unique_ptr<Program> working = startInstalled();
    constexpr int waiting = 3;
    for (int i = 0; i < waiting; ++i) {
        expectDone(*working, {u"open sale.toml"_s, u"request"_s});
        stopServer();
        expectDone(*working, {u"close"_s});
        startServer();
    }
    expectDone(*working, {u"open sale.toml"_s, u"points 10"_s});
    stopServer();
    install();
    EXPECT_TRUE(runsFromOldFiles(*working));
    expectDone(*working, {u"close"_s});
    EXPECT_GE(undelivered(), 1);
    startServer();
    // beside the old till, as the service does that the package has started again
    const std::unique_ptr<Program> beside = startInstalled();
    expectEverythingDelivered(*beside, waiting + 1);
    expectDone(*working, {u"open sale.toml"_s, u"close"_s});
    expectEverythingDelivered(*working, waiting + 2);
}

TEST_F(Upgrade, whatAKilledTillHasClosedAndSuspendedIsTakenUpByTheNewOne)
{
    const std::unique_ptr<Program> working = startInstalled();
    expectDone(*working, {u"open sale.toml"_s, u"request"_s, u"suspend"_s, u"open sale.toml"_s,
                          u"points 10"_s});
    stopServer();
    expectDone(*working, {u"close"_s});
    install();
    working->kill();
    startServer();
    const std::unique_ptr<Program> next = startInstalled();
    expectDone(*next, {u"restore last"_s, u"close"_s});
    expectEverythingDelivered(*next, 2);
}
