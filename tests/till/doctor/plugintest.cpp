// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/till/doctor/row.h"

#include <QFile>

#include <dlfcn.h>

using namespace Qt::StringLiterals;
using tests::expectFound;
using tests::Row;
using tests::Scene;

namespace {

std::function<void(Scene&)> naming(const QString& file)
{
    return [file](Scene& scene) { scene.set(u"till.plugin"_s, Scene::quoted(file)); };
}

/// The steps from one on, and what needs a plug-in.
QStringList from(int step)
{
    const QStringList steps{u"plugin.file"_s,      u"plugin.metadata"_s, u"plugin.qt"_s,
                            u"plugin.libraries"_s, u"plugin.loads"_s,    u"plugin.host"_s,
                            u"plugin.ready"_s};
    return steps.mid(step) + QStringList{u"logging"_s} + tests::server();
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
    scene.set(u"till.plugin"_s, Scene::quoted(file));
}

} // namespace

TEST(DoctorFinds, aPluginThatIsNoFile)
{
    expectFound({
        {"nothing there", naming(u"/nowhere/liborva.so"_s), u"plugin.file fails"_s, from(1)},
        {"a folder",
         [](Scene& scene) {
             scene.set(u"till.plugin"_s, Scene::quoted(scene.folder.file(QString())));
         },
         u"plugin.file fails"_s, from(1)},
    });
}

TEST(DoctorFinds, aPluginOfAnotherKind)
{
    expectFound({
        {"no library",
         [](Scene& scene) {
             const QString file = scene.folder.write(u"liborva.so"_s, "not a library at all");
             scene.set(u"till.plugin"_s, Scene::quoted(file));
         },
         u"plugin.metadata fails"_s, from(2)},
        {"no plug-in", naming(QStringLiteral(ORVA_PLAIN_LIBRARY)), u"plugin.metadata fails"_s,
         from(2)},
        {"for another program", naming(QStringLiteral(ORVA_OTHER_IDENTIFIER)),
         u"plugin.metadata fails"_s, from(2)},
    });
}

TEST(DoctorFinds, aPluginThatDoesNotLoad)
{
    expectFound({
        {"made with another Qt", nameOtherQt, u"plugin.qt fails"_s, from(3)},
        {"a library is missing", naming(QStringLiteral(ORVA_MISSING_LIBRARY)),
         u"plugin.libraries fails"_s, from(4)},
        {"a symbol is missing", naming(QStringLiteral(ORVA_MISSING_SYMBOL)),
         u"plugin.loads fails"_s, from(5)},
    });
}

TEST(DoctorFinds, aPluginThatTheTillCannotUse)
{
    expectFound({
        {"no loyalty system", naming(QStringLiteral(ORVA_PLAIN_OBJECT)), u"plugin.host fails"_s,
         from(6)},
        {"another host's", naming(QStringLiteral(ORVA_WITHOUT_PLUGIN_INTERFACE)),
         u"plugin.host fails"_s, from(6)},
        {"it refuses", naming(QStringLiteral(ORVA_REFUSES_INIT)), u"plugin.ready fails"_s, from(7)},
    });
}

TEST(DoctorNames, theMissingLibrary)
{
    Scene scene;
    scene.set(u"till.plugin"_s, Scene::quoted(QStringLiteral(ORVA_MISSING_LIBRARY)));
    const QString text = scene.examine().text();
    EXPECT_TRUE(text.contains(u"libtest-vanished.so is not found"_s)) << text.toStdString();
}

TEST(DoctorNames, log4QtWhereItIsInUse)
{
    Scene scene;
    const QString library = scene.elsewhere.file(u"liblog4qt.so.1"_s);
    ASSERT_TRUE(QFile::copy(QStringLiteral(ORVA_VANISHED), library));
    void* const loaded = ::dlopen(QFile::encodeName(library).constData(), RTLD_NOW);
    ASSERT_NE(loaded, nullptr) << ::dlerror();
    const QString text = scene.examine().text();
    ::dlclose(loaded);
    EXPECT_TRUE(text.contains(u"with Log4Qt (%1)"_s.arg(library))) << text.toStdString();
}
