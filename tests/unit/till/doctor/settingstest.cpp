// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The configuration and what is taken from the environment.

#include "host/config/knownkeys.h"
#include "tests/support/pluginkeys.h"
#include "tests/unit/till/doctor/row.h"

#include <QFile>

using namespace Qt::StringLiterals;
using tests::Row;
using tests::Scene;

namespace {

const QStringList everything{u"config."_s,   u"address."_s,  u"timeout"_s, u"road."_s,
                             u"tls."_s,      u"server."_s,   u"clock"_s,   u"plugin."_s,
                             u"logging"_s,   u"database."_s, u"disk"_s,    u"queue."_s,
                             u"recording"_s, u"checks."_s,   u"service"_s};

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
        {u"till.database"_s, {u"database."_s, u"disk"_s, u"queue."_s, u"checks."_s, u"service"_s}},
        {u"recording.folder"_s, {u"recording"_s}},
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

/// The configuration with a line in the place of another one, or behind the last.
void writeLine(Scene& scene, const QByteArray& former, const QByteArray& line)
{
    scene.write();
    QFile file(scene.configFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray content = file.readAll();
    ASSERT_TRUE(content.contains(former)) << content.constData();
    file.close();
    writeByHand(scene, content.replace(former, line));
    // whose keys they are shows no file that cannot be read
    scene.subject.installed = QStringLiteral(ORVA_PLUGIN_FILE);
}

Row line(const char* name, const QByteArray& former, const QByteArray& text,
         const QString& found = u"config.file fails"_s, const QStringList& skipped = everything)
{
    return {name, [=](Scene& scene) { writeLine(scene, former, text); }, found, skipped};
}

void openTo(const QString& file, QFile::Permissions more)
{
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | more);
}

QList<Row> unreadableConfigurations()
{
    return {
        {"a missing file",
         [](Scene& scene) {
             scene.write();
             scene.writtenByHand = true;
             QFile::remove(scene.configFile);
             scene.subject.plugin = QStringLiteral(ORVA_PLUGIN_FILE);
         },
         u"config.file fails"_s,
         everything,
         {},
         [](const Scene& scene) {
             return scene.address().toUtf8() + "\n1042\n3\n17\n4711\n12a\n";
         }},
        {"a file that its owner may not read",
         [](Scene& scene) {
             scene.write();
             scene.writtenByHand = true;
             scene.isOrdinaryUser = true;
             QFile::setPermissions(scene.configFile, QFile::WriteOwner);
         },
         u"config.file fails"_s, everything},
        {"a folder", [](Scene& scene) { scene.subject.configFile = scene.folder.file(QString()); },
         u"config.file fails"_s, everything},
        line("a text without quotes", "name = \"3\"", "name = shop"),
        line("two words without quotes", "name = \"3\"", "name = shop three  "),
        line("a secret without quotes", "apikey = \"12a\"", "apikey = 12a"),
        line("a text without its second quote", "user = \"17\"", "user = \"17"),
        line("a secret without its second quote", "password = \"4711\"", "password = \"4711"),
        line("a key without its sign", "user = \"17\"", "user \"17\""),
        line("a head without its bracket", "[Orva]", "[Orva"),
        line("a key that is there twice", "user = \"17\"", "user = \"17\"\nuser = \"other\""),
        line("a table that is none", "[Orva]", "recording = 5\n[Orva]"),
    };
}

QList<Row> secretsThatOthersMayRead()
{
    return {
        {"the configuration",
         [](Scene& scene) {
             scene.write();
             scene.writtenByHand = true;
             openTo(scene.configFile, QFile::ReadOther);
         },
         u"config.rights fails"_s},
        {"a file of its own",
         [](Scene& scene) {
             openTo(scene.folder.write(u"password"_s, "4711\n"), QFile::ReadOther);
             scene.set(u"Orva.password"_s, u"{ file = \"password\" }"_s);
         },
         u"config.rights fails"_s},
        {"a file that the group may change",
         [](Scene& scene) {
             openTo(scene.folder.write(u"password"_s, "4711\n"),
                    QFile::ReadGroup | QFile::WriteGroup);
             scene.set(u"Orva.password"_s, u"{ file = \"password\" }"_s);
         },
         u"config.rights fails"_s},
        {"three files at once",
         [](Scene& scene) {
             openTo(scene.folder.write(u"the password"_s, "4711\n"), QFile::ReadOther);
             openTo(scene.folder.write(u"it's the key"_s, "12a\n"), QFile::ReadOther);
             scene.set(u"Orva.password"_s, u"{ file = \"the password\" }"_s);
             scene.set(u"Orva.apikey"_s, u"{ file = \"it's the key\" }"_s);
             scene.set(u"http.proxy"_s, u"\"\""_s);
         },
         u"config.rights fails"_s},
    };
}

QList<Row> namesThatNobodyReads()
{
    const QString found = u"config.names warning"_s;
    return {
        {"a key", [](Scene& scene) { scene.set(u"Orva.colour"_s, u"5"_s); }, found},
        {"a key like a known one that is there",
         [](Scene& scene) { scene.set(u"Orva.time_out"_s, u"5"_s); }, found},
        {"a key like a known one that is not there",
         [](Scene& scene) {
             scene.set(u"queue.keepDeliveredDays"_s, QString());
             scene.set(u"queue.keepDeliveredDay"_s, u"30"_s);
         },
         found},
        {"a table like a known one", [](Scene& scene) { scene.set(u"orva.user"_s, u"\"17\""_s); },
         found},
        {"a table", [](Scene& scene) { scene.set(u"printer.width"_s, u"40"_s); }, found},
        {"several",
         [](Scene& scene) {
             scene.set(u"printer.width"_s, u"40"_s);
             scene.set(u"Orva.colour"_s, u"[ 1,\n 2 ]"_s);
             scene.set(u"till.nmae"_s, u"\"3\""_s);
         },
         found},
        line("a key outside of all tables", "[Orva]", "user = \"17\"\n[Orva]", found, {}),
    };
}

QList<Row> missingKeys()
{
    return brokenKeys([](const poshost::ConfigKey& key) {
        const bool isOptional =
            key.table == u"queue"_s || key.table == u"http"_s || key.table == u"recording"_s ||
            key.table == u"store"_s || key.table == u"verify"_s || key.key == u"timeout"_s ||
            key.key == u"name"_s || key.key == u"metricsFile"_s || key.key.endsWith(u"Days"_s);
        return isOptional ? QString() : u""_s;
    });
}

QList<Row> wrongTypes()
{
    // the right value, but for its quotes
    const QHash<QString, QString> values{{u"merchantId"_s, u"1042"_s},
                                         {u"pos"_s, u"3"_s},
                                         {u"user"_s, Scene::user()},
                                         {u"password"_s, Scene::password()},
                                         {u"apikey"_s, QString()}, // no value of another type
                                         {u"maxAnswerBytes"_s, u"\"1000000\""_s}};
    return brokenKeys([&](const poshost::ConfigKey& key) {
        const bool isNumber = key.kind == poshost::ConfigKey::Kind::Number;
        return values.value(key.key, isNumber ? u"\"5\""_s : u"5"_s);
    });
}

QList<Row> unusableValues()
{
    return {
        {"an empty text", [](Scene& scene) { scene.set(u"Orva.pos"_s, u"\"\""_s); },
         u"config.Orva.pos fails"_s, tests::server()},
        {"a number out of range", [](Scene& scene) { scene.set(u"http.maxAnswerBytes"_s, u"0"_s); },
         u"config.http.maxAnswerBytes fails"_s},
        {"a number in words",
         [](Scene& scene) { scene.set(u"Orva.timeout"_s, u"\"ten\""_s); },
         u"config.Orva.timeout fails"_s,
         {u"timeout"_s}},
        {"a secret's file that is not there",
         [](Scene& scene) { scene.set(u"Orva.password"_s, u"{ file = \"absent\" }"_s); },
         u"config.Orva.password fails"_s, tests::server()},
        {"a secret's file that its owner may not read",
         [](Scene& scene) {
             QFile::setPermissions(scene.folder.write(u"password"_s, "4711\n"), {});
             scene.isOrdinaryUser = true;
             scene.set(u"Orva.password"_s, u"{ file = \"password\" }"_s);
         },
         u"config.Orva.password fails"_s, tests::server()},
        {"a secret's file with two lines",
         [](Scene& scene) {
             scene.folder.write(u"password"_s, "4711\nother\n");
             scene.set(u"Orva.password"_s, u"{ file = \"password\" }"_s);
         },
         u"config.Orva.password fails"_s, tests::server(),
         [](const Scene& scene) { scene.folder.write(u"password"_s, "4711\n"); }},
        {"certificates that are not there",
         [](Scene& scene) { scene.set(u"http.caFile"_s, u"\"absent.pem\""_s); },
         u"config.http.caFile fails"_s},
        {"certificates that are none",
         [](Scene& scene) { scene.set(u"http.caFile"_s, u"\"orva.toml\""_s); },
         u"config.http.caFile fails"_s},
    };
}

QList<Row> addressesThatAreNone()
{
    const QStringList rest = QStringList{u"address."_s} + tests::way();
    return {
        {"another scheme", [](Scene& scene) { scene.setAddress(u"ftp://127.0.0.1/"_s); },
         u"config.Orva.serverUrl fails"_s, rest},
        {"no scheme", [](Scene& scene) { scene.setAddress(scene.address().remove(u"http://"_s)); },
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
    };
}

QList<Row> unwantedTimeOuts()
{
    QList<Row> rows;
    for (const QString& seconds : {u"0"_s, u"-1"_s, u"1"_s, u"31"_s, u"86400"_s}) {
        rows.append({"a time-out",
                     [seconds](Scene& scene) { scene.set(u"Orva.timeout"_s, seconds); },
                     u"timeout warning"_s});
    }
    return rows;
}

} // namespace

QList<tests::Ways> tests::settingsWays()
{
    return {
        {"configurationThatCannotBeRead", unreadableConfigurations},
        {"secretsThatOthersMayRead", secretsThatOthersMayRead},
        {"namesThatNobodyReads", namesThatNobodyReads},
        {"missingKeys", missingKeys},
        {"keysOfAWrongType", wrongTypes},
        {"valuesThatCannotBeUsed", unusableValues},
        {"addressesThatAreNone", addressesThatAreNone},
        {"timeOutsThatNobodyWants", unwantedTimeOuts},
    };
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
    constexpr int wide = 1000;
    EXPECT_TRUE(report.text(wide).contains(u"by hand: install the plug-in anew, "_s + sheet))
        << report.text().toStdString();
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
