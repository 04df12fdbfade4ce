// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/doctor/printedmend.h"
#include "tests/unit/till/doctor/row.h"
#include "till/desk/librarylog.h"

#include <QDir>
#include <QFile>

#include <dlfcn.h>
#include <string>

using namespace Qt::StringLiterals;
using tests::Row;
using tests::Scene;

namespace {

std::function<void(Scene&)> naming(const QString& file)
{
    return [file](Scene& scene) { scene.set(u"till.plugin"_s, Scene::quoted(file)); };
}

/// The steps from one on, and what needs a plug-in or the sheet that is not beside it.
QStringList from(int step, const QStringList& more = tests::behindTheSheet())
{
    const QStringList steps{u"plugin.file"_s,      u"plugin.metadata"_s, u"plugin.qt"_s,
                            u"plugin.libraries"_s, u"plugin.loads"_s,    u"plugin.host"_s,
                            u"plugin.ready"_s};
    QStringList rest = more;
    rest.append(u"logging"_s);
    rest.append(steps.mid(step));
    return rest;
}

/// A copy of the built plug-in that says to have been made with another version of Qt.
void nameOtherQt(Scene& scene)
{
    QFile built(QStringLiteral(ORVA_PLUGIN_FILE));
    ASSERT_TRUE(built.open(QIODevice::ReadOnly));
    QByteArray content = built.readAll();
    // behind the mark stand a zero, the format's version and Qt's major and minor version
    const QByteArray mark("qt-project!\0\1\6", 14);
    const qsizetype at = content.indexOf(mark);
    ASSERT_GT(at, 0);
    content[at + mark.size()] = 99;
    const QString file = scene.folder.write(u"liborva.so"_s, content);
    scene.giveKeySheet();
    scene.set(u"till.plugin"_s, Scene::quoted(file));
}

std::function<void(Scene&)> namingInstalled(const QString& file)
{
    return [file](Scene& scene) {
        scene.set(u"till.plugin"_s, Scene::quoted(file));
        scene.subject.installed = QStringLiteral(ORVA_PLUGIN_FILE);
    };
}

/// Each that is no use, where another one is installed, or is not.
QList<Row> pluginsThatAreNone()
{
    return {
        {"nothing there", naming(u"/nowhere/liborva.so"_s), u"plugin.file fails"_s, from(1)},
        {"nothing there but one installed", namingInstalled(u"/nowhere/liborva.so"_s),
         u"plugin.file fails"_s, from(1)},
        {"a folder",
         [](Scene& scene) {
             scene.set(u"till.plugin"_s, Scene::quoted(scene.folder.file(QString())));
         },
         u"plugin.file fails"_s, from(1)},
        {"a file that its owner may not read",
         [](Scene& scene) {
             scene.isOrdinaryUser = true;
             const QString plugin = scene.folder.file(u"liborva.so"_s);
             EXPECT_TRUE(QFile::copy(QStringLiteral(ORVA_PLUGIN_FILE), plugin));
             scene.giveKeySheet();
             QFile::setPermissions(plugin, QFile::ExeOwner);
             scene.set(u"till.plugin"_s, Scene::quoted(plugin));
         },
         u"plugin.file fails"_s, from(1, tests::server())},
        {"no library",
         [](Scene& scene) {
             const QString file = scene.folder.write(u"liborva.so"_s, "not a library at all");
             scene.set(u"till.plugin"_s, Scene::quoted(file));
         },
         u"plugin.metadata fails"_s, from(2)},
        {"no plug-in", naming(QStringLiteral(ORVA_PLAIN_LIBRARY)), u"plugin.metadata fails"_s,
         from(2)},
        {"for another program", namingInstalled(QStringLiteral(ORVA_OTHER_IDENTIFIER)),
         u"plugin.metadata fails"_s, from(2)},
    };
}

QList<Row> pluginsThatDoNotLoad()
{
    return {
        {"made with another Qt", nameOtherQt, u"plugin.qt fails"_s, from(3, tests::server())},
        {"a library is missing", naming(QStringLiteral(ORVA_MISSING_LIBRARY)),
         u"plugin.libraries fails"_s, from(4)},
        {"a symbol is missing", naming(QStringLiteral(ORVA_MISSING_SYMBOL)),
         u"plugin.loads fails"_s, from(5)},
        {"a symbol is missing, and one is installed",
         namingInstalled(QStringLiteral(ORVA_MISSING_SYMBOL)), u"plugin.loads fails"_s, from(5)},
        {"no loyalty system", naming(QStringLiteral(ORVA_PLAIN_OBJECT)), u"plugin.host fails"_s,
         from(6)},
        {"another host's", naming(QStringLiteral(ORVA_WITHOUT_PLUGIN_INTERFACE)),
         u"plugin.host fails"_s, from(6)},
        {"it refuses", naming(QStringLiteral(ORVA_REFUSES_INIT)), u"plugin.ready fails"_s, from(7)},
    };
}

} // namespace

QList<tests::Ways> tests::pluginWays()
{
    return {{"pluginsThatAreNone", pluginsThatAreNone},
            {"pluginsThatDoNotLoad", pluginsThatDoNotLoad}};
}

TEST(Doctor, takesTheInstalledPluginForSet)
{
    Scene scene;
    scene.set(u"till.plugin"_s, QString());
    scene.subject.installed = QStringLiteral(ORVA_PLUGIN_FILE);
    const till::doctor::Report report = scene.examine();
    EXPECT_EQ(report.count(till::doctor::Mark::Fails), 0) << report.text().toStdString();
    EXPECT_EQ(report.count(till::doctor::Mark::Warning), 0) << report.text().toStdString();
    EXPECT_EQ(Scene::marksOf(report).value(u"server.precheck"_s), u"ok"_s);
}

TEST(DoctorNames, theMissingLibrary)
{
    Scene scene;
    scene.set(u"till.plugin"_s, Scene::quoted(QStringLiteral(ORVA_MISSING_LIBRARY)));
    const QString text = scene.examine().text(1000);
    EXPECT_TRUE(text.contains(u"libtest-vanished.so is not found"_s)) << text.toStdString();
}

namespace {

/// A library that is called as Log4Qt while it lives, and the folder that the doctor is started in.
class LoggingLibrary
{
public:
    LoggingLibrary() : former(QDir::currentPath())
    {
        EXPECT_TRUE(QFile::copy(QStringLiteral(ORVA_VANISHED), file));
        loaded = ::dlopen(QFile::encodeName(file).constData(), RTLD_NOW);
        EXPECT_NE(loaded, nullptr) << ::dlerror();
        QDir::setCurrent(scene.elsewhere.file(QString()));
    }
    ~LoggingLibrary()
    {
        QDir::setCurrent(former);
        ::dlclose(loaded);
    }
    LoggingLibrary(const LoggingLibrary&) = delete;
    LoggingLibrary& operator=(const LoggingLibrary&) = delete;

    void configure(const QByteArray& properties) const
    {
        scene.elsewhere.write(u"log4qt.properties"_s, properties);
    }

    /// "mark: text" of the check.
    std::string found()
    {
        const till::doctor::Report report = scene.examine();
        for (const auto& row : report.rows()) {
            if (row.id == u"logging"_s) {
                return Scene::marksOf(report).value(row.id).toStdString() + ": " +
                       row.finding.text.toStdString() + " | " + row.finding.mend.text.toStdString();
            }
        }
        return {};
    }

    Scene scene;
    const QString file = scene.elsewhere.file(u"liblog4qt.so.1"_s);
    const std::string way = "with Log4Qt (" + file.toStdString() + ")";
    const std::string configuration = scene.elsewhere.file(u"log4qt.properties"_s).toStdString();

private:
    const QString former;
    void* loaded = nullptr;
};

} // namespace

TEST(DoctorNames, log4QtWithoutAConfiguration)
{
    LoggingLibrary library;
    EXPECT_EQ(library.found(),
              till::librarylog::isKnown()
                  ? "ok: " + library.way +
                        ", without an appender: to the till's "
                        "console, by Qt's category orva | "
                  : "warning: " + library.way +
                        ", without an appender: its lines are "
                        "lost | write a log4qt.properties with an appender for the "
                        "logger orva into the folder of the program");
}

TEST(DoctorNames, whereLog4QtWrites)
{
    LoggingLibrary library;
    const QByteArray file = "log4j.appender.f=org.apache.log4j.FileAppender\n"
                            "log4j.appender.f.file=/var/log/orva.log\n";
    const QByteArray appended = file + "log4j.appender.f.appendFile=true\n";
    const std::string where = library.way + ", by " + library.configuration + ", to ";

    library.configure("# lines of\n log4j.logger.orva = DEBUG, \\\n f\n" + appended);
    EXPECT_EQ(library.found(), "ok: " + where + "/var/log/orva.log | ");

    library.configure("log4j.rootLogger=WARN, c, f\nlog4j.logger.orva=INFO, f\n" + appended +
                      "log4j.appender.c=org.apache.log4j.ConsoleAppender\n");
    EXPECT_EQ(library.found(), "ok: " + where + "/var/log/orva.log, ConsoleAppender | ");

    library.configure("log4j.rootLogger=INFO, f\n" + file);
    EXPECT_EQ(library.found(), "warning: " + where +
                                   "/var/log/orva.log, but every start empties /var/log/orva.log | "
                                   "log4j.appender.f.appendFile=true");

    library.configure("log4j.rootLogger=INFO, f\nlog4j.logger.orva=OFF\n" + appended);
    EXPECT_EQ(library.found(),
              "warning: " + where + "/var/log/orva.log, but switched off | log4j.logger.orva=INFO");
}

/// In the file, behind its last line and in the place of a line.
TEST(DoctorNames, linesForLog4QtThatMendAsTheyArePrinted)
{
    const QByteArray appender = "log4j.appender.f=org.apache.log4j.FileAppender\n"
                                "log4j.appender.f.file=orva.log\n";
    for (const QByteArray& broken :
         {"log4j.rootLogger=INFO, f\n" + appender,
          "log4j.appender.f.appendFile=false\nlog4j.rootLogger=INFO, f\n" + appender,
          "log4j.rootLogger=INFO, f\nlog4j.logger.orva=OFF\nlog4j.appender.f.appendFile=true\n" +
              appender}) {
        LoggingLibrary library;
        library.configure(broken);
        EXPECT_EQ(library.found().find("warning"), 0u) << broken.toStdString();
        const tests::PrintedMend mend(library.scene.examine().text());
        ASSERT_TRUE(mend.isLine()) << mend.text().toStdString();
        mend.putIntoFile();
        EXPECT_EQ(library.found(),
                  "ok: " + library.way + ", by " + library.configuration + ", to orva.log | ");
    }
}

TEST(DoctorNames, noLog4QtTargetThatTheLoggerDoesNotReach)
{
    LoggingLibrary library;
    library.configure("log4j.rootLogger=INFO, c\nlog4j.logger.orva=INFO\n"
                      "log4j.additivity.orva=false\n"
                      "log4j.appender.c=org.apache.log4j.ConsoleAppender\n");
    EXPECT_TRUE(library.found().find("without an appender") != std::string::npos)
        << library.found();
}

TEST(DoctorNames, theFileThatTheEnvironmentNamesForLog4Qt)
{
    LoggingLibrary library;
    library.configure("log4j.rootLogger=INFO, c\n"
                      "log4j.appender.c=org.apache.log4j.ConsoleAppender\n");
    const QString named = library.scene.elsewhere.write(
        u"named.properties"_s, "log4j.rootLogger=INFO, d\n"
                               "log4j.appender.d=org.apache.log4j.DebugAppender\n");
    qputenv("LOG4QT_CONFIGURATION", QFile::encodeName(named));
    const std::string byName = library.found();
    qputenv("LOG4QT_DEFAULTINITOVERRIDE", "true");
    const std::string overridden = library.found();
    qunsetenv("LOG4QT_DEFAULTINITOVERRIDE");
    qunsetenv("LOG4QT_CONFIGURATION");
    EXPECT_EQ(byName,
              "ok: " + library.way + ", by " + named.toStdString() + ", to DebugAppender | ");
    EXPECT_TRUE(overridden.find("without an appender") != std::string::npos) << overridden;
}
