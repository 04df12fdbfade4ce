// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The configuration and what is taken from the environment.

#include "host/config/knownkeys.h"
#include "tests/support/pluginkeys.h"
#include "tests/unit/till/doctor/row.h"

#include <QFile>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;
using tests::expectFound;
using tests::Row;
using tests::Scene;

namespace {

const QStringList everything{u"config."_s, u"address."_s,  u"timeout"_s, u"road."_s,
                             u"tls."_s,    u"server."_s,   u"clock"_s,   u"plugin."_s,
                             u"logging"_s, u"database."_s, u"disk"_s,    u"queue."_s};

void writeByHand(Scene& scene, const QByteArray& text)
{
    scene.folder.write(u"orva.toml"_s, text);
    scene.writtenByHand = true;
}

/// What cannot be checked without a key.
QStringList behind(const QString& key)
{
    const QHash<QString, QStringList> groups{
        {u"Orva.serverUrl"_s, QStringList{u"address."_s} + tests::way()},
        {u"Orva.merchantId"_s, tests::server()},
        {u"Orva.pos"_s, tests::server()},
        {u"Orva.timeout"_s, {u"timeout"_s}},
        {u"Orva.user"_s, tests::server()},
        {u"Orva.password"_s, tests::server()},
        {u"Orva.apikey"_s, tests::server()},
        {u"http.proxy"_s, tests::way()},
        {u"till.database"_s, {u"database."_s, u"disk"_s, u"queue."_s}},
        {u"till.plugin"_s, QStringList{u"plugin."_s, u"logging"_s} + tests::behindTheSheet()},
    };
    return groups.value(key);
}

QString named(const poshost::ConfigKey& key)
{
    return key.table + u'.' + key.key;
}

/// Breaks every key of a sort in the same way.
QList<Row> brokenKeys(const std::function<QString(const poshost::ConfigKey&)>& value)
{
    QList<Row> rows;
    const PluginKeys plugin(QStringLiteral(ORVA_PLUGIN_FILE));
    for (const poshost::ConfigKey& key : poshost::knownkeys::all()) {
        const QString toml = value(key);
        if (!toml.isNull()) {
            rows.append({"a key",
                         [key, toml](Scene& scene) {
                             SCOPED_TRACE(named(key).toStdString());
                             scene.set(named(key), toml);
                         },
                         u"config.%1 fails"_s.arg(named(key)), behind(named(key))});
        }
    }
    return rows;
}

} // namespace

TEST(DoctorFinds, aConfigurationThatCannotBeRead)
{
    expectFound({
        {"a missing file",
         [](Scene& scene) { scene.subject.configFile = scene.folder.file(u"absent.toml"_s); },
         u"config.file fails"_s, everything},
        {"a folder", [](Scene& scene) { scene.subject.configFile = scene.folder.file(QString()); },
         u"config.file fails"_s, everything},
        {"no TOML", [](Scene& scene) { writeByHand(scene, "[Orva]\nuser = till\n"); },
         u"config.file fails"_s, everything},
        {"a table that is none", [](Scene& scene) { writeByHand(scene, "http = 5\n"); },
         u"config.file fails"_s, everything},
    });
}

TEST(DoctorFinds, aKeySheetThatIsDamaged)
{
    Scene scene;
    const QString plugin = scene.folder.file(u"liborva.so"_s);
    ASSERT_TRUE(QFile::copy(QStringLiteral(ORVA_PLUGIN_FILE), plugin));
    const QString sheet = scene.folder.write(u"liborva.keys.toml"_s, "table = ");
    scene.set(u"till.plugin"_s, Scene::quoted(plugin));
    const till::doctor::Report report = scene.examine();
    EXPECT_EQ(Scene::marksOf(report).value(u"config.file"_s), u"fails"_s);
    EXPECT_TRUE(report.text().contains(u"ls -lL "_s + sheet)) << report.text().toStdString();
}

TEST(Doctor, asksTheServerThroughAPluginWithoutAKeySheet)
{
    Scene scene;
    const QString plugin = scene.folder.file(u"liborva.so"_s);
    ASSERT_TRUE(QFile::copy(QStringLiteral(ORVA_PLUGIN_FILE), plugin));
    scene.set(u"till.plugin"_s, Scene::quoted(plugin));
    const till::doctor::Report report = scene.examine();
    EXPECT_EQ(report.count(till::doctor::Mark::Fails), 0) << report.text().toStdString();
    EXPECT_EQ(report.count(till::doctor::Mark::Warning), 0) << report.text().toStdString();
    const QMap<QString, QString> marks = Scene::marksOf(report);
    EXPECT_FALSE(marks.contains(u"config.Orva.serverUrl"_s));
    EXPECT_TRUE(marks.contains(u"config.http.proxy"_s));
    for (const QString& id : {u"address.scheme"_s, u"address.slash"_s, u"address.query"_s,
                              u"timeout"_s, u"road.name"_s, u"road.connection"_s}) {
        EXPECT_EQ(marks.value(id), u"skipped"_s) << id.toStdString();
    }
    EXPECT_EQ(marks.value(u"server.precheck"_s), u"ok"_s) << report.text().toStdString();
}

TEST(DoctorFinds, secretsThatOthersMayRead)
{
    const QFile::Permissions open = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther;
    expectFound({
        {"the configuration",
         [open](Scene& scene) {
             scene.write();
             scene.writtenByHand = true;
             QFile::setPermissions(scene.configFile, open);
         },
         u"config.rights fails"_s},
        {"a file of its own",
         [open](Scene& scene) {
             QFile::setPermissions(scene.folder.write(u"password"_s, "secret\n"), open);
             scene.set(u"Orva.password"_s, u"{ file = \"password\" }"_s);
         },
         u"config.rights fails"_s},
    });
}

TEST(DoctorFinds, namesThatNobodyReads)
{
    expectFound({
        {"a key", [](Scene& scene) { scene.set(u"Orva.time_out"_s, u"5"_s); },
         u"config.names warning"_s},
        {"a table", [](Scene& scene) { scene.set(u"orva.user"_s, u"\"till\""_s); },
         u"config.names warning"_s},
    });
}

TEST(DoctorFinds, everyMissingKeyThatIsNeeded)
{
    const QList<Row> rows = brokenKeys([](const poshost::ConfigKey& key) {
        const bool isOptional = key.table == u"queue"_s || key.table == u"http"_s ||
                                key.table == u"recording"_s || key.key == u"timeout"_s ||
                                key.key == u"name"_s;
        return isOptional ? QString() : u""_s;
    });
    EXPECT_EQ(rows.size(), 8);
    expectFound(rows);
}

TEST(DoctorFinds, everyKeyOfAWrongType)
{
    const QList<Row> rows = brokenKeys([](const poshost::ConfigKey& key) {
        return key.kind == poshost::ConfigKey::Kind::Number ? u"\"5\""_s : u"5"_s;
    });
    EXPECT_EQ(rows.size(), 17);
    expectFound(rows);
}

TEST(DoctorFinds, valuesThatCannotBeUsed)
{
    expectFound({
        {"an empty text", [](Scene& scene) { scene.set(u"Orva.pos"_s, u"\"\""_s); },
         u"config.Orva.pos fails"_s, tests::server()},
        {"a number out of range", [](Scene& scene) { scene.set(u"http.maxAnswerBytes"_s, u"0"_s); },
         u"config.http.maxAnswerBytes fails"_s},
        {"a secret's file that is not there",
         [](Scene& scene) { scene.set(u"Orva.password"_s, u"{ file = \"absent\" }"_s); },
         u"config.Orva.password fails"_s, tests::server()},
        {"certificates that are not there",
         [](Scene& scene) { scene.set(u"http.caFile"_s, u"\"absent.pem\""_s); },
         u"config.http.caFile fails"_s},
        {"certificates that are none",
         [](Scene& scene) { scene.set(u"http.caFile"_s, u"\"orva.toml\""_s); },
         u"config.http.caFile fails"_s},
    });
}

TEST(DoctorFinds, addressesThatAreNone)
{
    const QStringList rest = QStringList{u"address."_s} + tests::way();
    expectFound({
        {"another scheme", [](Scene& scene) { scene.setAddress(u"ftp://127.0.0.1/"_s); },
         u"config.Orva.serverUrl fails"_s, rest},
        {"no scheme", [](Scene& scene) { scene.setAddress(u"127.0.0.1:8710/"_s); },
         u"config.Orva.serverUrl fails"_s, rest},
        {"no host", [](Scene& scene) { scene.setAddress(u"http:///"_s); },
         u"config.Orva.serverUrl fails"_s, rest},
        {"http through the shop's network",
         [](Scene& scene) {
             scene.setAddress(scene.address().replace(u"127.0.0.1"_s, u"shop.orva.test"_s));
         },
         u"address.scheme warning"_s},
        {"no slash at its end", [](Scene& scene) { scene.setAddress(scene.address(QString())); },
         u"address.slash fails"_s, tests::server()},
        {"a query", [](Scene& scene) { scene.setAddress(scene.address(u"/?shop=1"_s)); },
         u"address.query warning"_s},
        {"a user",
         [](Scene& scene) {
             scene.setAddress(scene.address().replace(u"://"_s, u"://till:secret@"_s));
         },
         u"config.Orva.serverUrl fails"_s, rest},
    });
}

TEST(DoctorFinds, timeOutsThatNobodyWants)
{
    QList<Row> rows;
    for (const QString& seconds : {u"0"_s, u"-1"_s, u"1"_s, u"31"_s, u"86400"_s}) {
        rows.append({"a time-out",
                     [seconds](Scene& scene) { scene.set(u"Orva.timeout"_s, seconds); },
                     u"timeout warning"_s});
    }
    expectFound(rows);
}

TEST(DoctorFinds, anEnvironmentWithoutUtf8)
{
    const QByteArray before = qgetenv("LC_ALL");
    for (const QByteArray locale : {"C", "xx_XX.UTF-8"}) {
        expectFound({{locale.constData(), [locale](Scene&) { qputenv("LC_ALL", locale); },
                      u"encoding fails"_s}});
        qputenv("LC_ALL", before);
    }
}

TEST(DoctorFinds, errorsThatAreNotLogged)
{
    expectFound({{"rules of the environment",
                  [](Scene&) { QLoggingCategory::setFilterRules(u"orva.critical=false"_s); },
                  u"logging warning"_s}});
    QLoggingCategory::setFilterRules(QString());
}
