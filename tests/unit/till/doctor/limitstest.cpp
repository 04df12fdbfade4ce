// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Whatever hangs, the doctor comes to its end in time, and names what hangs and nothing else.

#include "contract/rawserver.h"
#include "tests/support/program.h"
#include "tests/support/resolver.h"
#include "tests/unit/till/doctor/row.h"

#include <QElapsedTimer>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using tests::Scene;

namespace {

constexpr qint64 limitMilliseconds = 5000;

/// What fails of a broken scene; expects that it was found in time.
QStringList failuresInTime(Scene& scene)
{
    scene.write();
    QElapsedTimer clock;
    clock.start();
    const till::doctor::Report report = scene.examine();
    EXPECT_LT(clock.elapsed(), limitMilliseconds) << report.text().toStdString();
    QStringList failures;
    for (const auto& row : report.rows()) {
        if (row.finding.mark == till::doctor::Mark::Fails) {
            failures.append(row.id);
        }
    }
    return failures;
}

/// The same with the program, for what may be left behind when a process ends.
RunResult programInTime(const Scene& scene)
{
    scene.write();
    QElapsedTimer clock;
    clock.start();
    const RunResult result =
        runProgram(QStringLiteral(ORVA_TILL), {u"doctor"_s, u"--config"_s, scene.configFile},
                   scene.folder.file(QString()));
    EXPECT_LT(clock.elapsed(), limitMilliseconds) << result.output.toStdString();
    return result;
}

QStringList failingLines(const QString& output)
{
    return output.split(u'\n').filter(u"fails "_s);
}

} // namespace

TEST(DoctorInTime, aServerThatSaysNothing)
{
    Scene scene;
    simulator::Fault fault;
    fault.kind = simulator::FaultKind::HangBeforeHeaders;
    scene.strike(fault);
    EXPECT_EQ(failuresInTime(scene), QStringList{u"server.answer"_s});
}

TEST(DoctorInTime, aServerThatShakesNoHands)
{
    RawServer silent([](RawServer::Connection& connection) { connection.hang(); });
    Scene scene(Scene::Way::Https);
    scene.setAddress(u"https://shop.orva.test:%1/"_s.arg(silent.port()));
    EXPECT_EQ(failuresInTime(scene), QStringList{u"tls.trust"_s});
}

TEST(DoctorInTime, aProxyThatSaysNothing)
{
    RawServer silent([](RawServer::Connection& connection) { connection.hang(); });
    Scene scene(Scene::Way::Https);
    scene.set(u"http.proxy"_s, u"\"http://127.0.0.1:%1\""_s.arg(silent.port()));
    EXPECT_EQ(failuresInTime(scene), QStringList{u"road.proxy"_s});
}

TEST(DoctorInTime, aNameServerThatSaysNothing)
{
    Scene scene(Scene::Way::Https);
    resolver::hang();
    EXPECT_EQ(failuresInTime(scene), QStringList{u"road.name"_s});
    resolver::letGo();
}

TEST(DoctorInTime, aConfigurationThatDoesNotEnd)
{
    Scene scene;
    scene.writtenByHand = true;
    ASSERT_EQ(::mkfifo(scene.configFile.toUtf8().constData(), 0600), 0);
    const RunResult result = programInTime(scene);
    EXPECT_EQ(result.exitCode, 1);
    const QStringList failing = failingLines(result.output);
    ASSERT_EQ(failing.size(), 1) << result.output.toStdString();
    EXPECT_TRUE(failing.first().contains(u"Configuration file"_s)) << result.output.toStdString();
}

TEST(DoctorInTime, aPluginThatDoesNotEndItsLoading)
{
    Scene scene;
    scene.set(u"till.plugin"_s, Scene::quoted(QStringLiteral(ORVA_HANGS_ON_LOAD)));
    const RunResult result = programInTime(scene);
    EXPECT_EQ(result.exitCode, 1);
    const QStringList failing = failingLines(result.output);
    ASSERT_EQ(failing.size(), 1) << result.output.toStdString();
    EXPECT_TRUE(failing.first().contains(u"Plug-in, loading"_s)) << result.output.toStdString();
}

TEST(DoctorInTime, everythingAtOnce)
{
    RawServer silent([](RawServer::Connection& connection) { connection.hang(); });
    Scene scene(Scene::Way::Https);
    scene.set(u"http.proxy"_s, u"\"http://127.0.0.1:%1\""_s.arg(silent.port()));
    const QString plugin = scene.folder.file(u"liborva.so"_s);
    ASSERT_TRUE(QFile::link(QStringLiteral(ORVA_HANGS_ON_LOAD), plugin));
    scene.giveKeySheet();
    scene.set(u"till.plugin"_s, Scene::quoted(plugin));
    const RunResult result = programInTime(scene);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(failingLines(result.output).size(), 2) << result.output.toStdString();
}
