// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What "doctor --fix" does, and what it leaves to a person.

#include "tests/support/program.h"
#include "tests/unit/till/doctor/row.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;
using tests::Scene;

namespace {

RunResult fixed(const Scene& scene, const QStringList& more = {})
{
    return runProgram(QStringLiteral(ORVA_TILL),
                      QStringList{u"doctor"_s, u"--fix"_s, u"--config"_s, scene.configFile} + more,
                      scene.elsewhere.file(QString()));
}

QByteArray contentOf(const QString& name)
{
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

/// The copies of the configuration, the first one first.
QStringList copies(const Scene& scene)
{
    return QDir(scene.folder.file(QString()))
        .entryList({u"orva.toml.before-*"_s}, QDir::Files, QDir::Time | QDir::Reversed);
}

} // namespace

TEST(DoctorFix, appliesWhatIsSafeAndKeepsACopy)
{
    Scene scene;
    scene.setAddress(scene.address(QString())); // without the "/"
    scene.set(u"Orva.timeout"_s, u"\"7\""_s);
    scene.set(u"Orva.colour"_s, u"5"_s);
    QFile::setPermissions(scene.folder.write(u"password"_s, "4711\n"),
                          QFile::ReadOwner | QFile::ReadOther);
    scene.set(u"Orva.password"_s, u"{ file = \"password\" }"_s);
    scene.write();
    QFile::setPermissions(scene.configFile,
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    const QByteArray before = contentOf(scene.configFile);
    const RunResult result = fixed(scene);
    EXPECT_EQ(result.exitCode, 0) << result.output.toStdString();
    EXPECT_EQ(result.output.count(u"mended:"_s), 4) << result.output.toStdString();
    EXPECT_TRUE(result.output.contains(u" 0 with a warning, 0 failed, "_s))
        << result.output.toStdString();

    const QStringList kept = copies(scene);
    ASSERT_EQ(kept.size(), 3) << result.output.toStdString();
    for (const QString& name : kept) {
        EXPECT_TRUE(result.output.contains(name)) << name.toStdString();
        EXPECT_EQ(QFile::permissions(scene.folder.file(name)) & QFile::ReadOther,
                  QFile::Permissions());
    }
    EXPECT_TRUE(std::any_of(kept.cbegin(), kept.cend(), [&](const QString& name) {
        return contentOf(scene.folder.file(name)) == before;
    }));
    EXPECT_EQ(contentOf(scene.configFile).count('\n'), before.count('\n'));
    EXPECT_TRUE(contentOf(scene.configFile).contains("timeout = 7\n"));
    EXPECT_TRUE(QFile::permissions(scene.configFile).testFlag(QFile::ReadGroup))
        << "the service may not read it any more";
}

TEST(DoctorFix, leavesToAPersonWhatOnlyAPersonKnows)
{
    Scene scene;
    scene.set(u"Orva.user"_s, QString());
    scene.set(u"till.nmae"_s, u"\"3\""_s);
    scene.set(u"till.name"_s, QString()); // so that a name is guessed
    scene.write();
    const QByteArray before = contentOf(scene.configFile);
    const RunResult result = fixed(scene);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(contentOf(scene.configFile), before);
    EXPECT_TRUE(copies(scene).isEmpty());
    EXPECT_FALSE(result.output.contains(u"mended"_s)) << result.output.toStdString();
}

TEST(DoctorFix, tellsProgramsWhatItDid)
{
    Scene scene;
    scene.setAddress(scene.address(QString()));
    scene.write();
    const RunResult result = fixed(scene, {u"--json"_s});
    const QJsonObject report = QJsonDocument::fromJson(result.output.toUtf8()).object();
    const QJsonArray fixes = report.value(u"fixes"_s).toArray();
    ASSERT_EQ(fixes.size(), 1) << result.output.toStdString();
    const QJsonObject fix = fixes.first().toObject();
    EXPECT_EQ(fix.value(u"id"_s).toString(), u"address.slash"_s);
    EXPECT_TRUE(fix.value(u"applied"_s).toBool());
    EXPECT_TRUE(QFileInfo::exists(fix.value(u"copy"_s).toString()));
    EXPECT_EQ(report.value(u"failed"_s).toInt(-1), 0);
}
