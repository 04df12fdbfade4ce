// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/basicloyaltysystem.h"
#include "host/loyalty/loyaltysystems.h"
#include "tests/unit/client/printers.h"

#include <QFile>
#include <QMetaType>
#include <QPluginLoader>
#include <QPointer>
#include <QTemporaryDir>

#include <QtPlugin>
#include <dlfcn.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class ModuleTest : public ::testing::Test
{
protected:
    ModuleTest() : loader(QStringLiteral(ORVA_PLUGIN_FILE)), object(loader.instance()) {}
    ~ModuleTest() override { delete object.get(); }

    void SetUp() override { ASSERT_FALSE(object.isNull()) << loader.errorString().toStdString(); }

    QPluginLoader loader;
    QPointer<QObject> object;
};

TEST_F(ModuleTest, GivesTheSameObjectAgainAndAgain)
{
    QPluginLoader second(QStringLiteral(ORVA_PLUGIN_FILE));
    EXPECT_EQ(loader.instance(), object);
    EXPECT_EQ(second.instance(), object);
    void* const library = dlopen(ORVA_PLUGIN_FILE, RTLD_NOW);
    ASSERT_NE(library, nullptr) << dlerror();
    const auto entry =
        reinterpret_cast<QtPluginInstanceFunction>(dlsym(library, "qt_plugin_instance"));
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry(), object);
    EXPECT_EQ(entry(), object);
    dlclose(library);
}

TEST_F(ModuleTest, GivesANewObjectAfterTheFormerWasDeleted)
{
    delete object.get();
    ASSERT_TRUE(object.isNull());
    object = loader.instance();
    ASSERT_FALSE(object.isNull());
    EXPECT_EQ(loader.instance(), object);
    auto* const system = qobject_cast<BasicLoyaltySystem*>(object.get());
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(system->getLoyaltySystemType(), 15);
}

TEST_F(ModuleTest, ANewObjectKnowsNothingOfTheFormer)
{
    auto* system = qobject_cast<BasicLoyaltySystem*>(object.get());
    ASSERT_NE(system, nullptr);
    system->setPointsForSpend({}, 5);
    EXPECT_TRUE(system->hasPointsForSpend());
    delete object.get();
    object = loader.instance();
    system = qobject_cast<BasicLoyaltySystem*>(object.get());
    ASSERT_NE(system, nullptr);
    EXPECT_FALSE(system->hasPointsForSpend());
}

TEST_F(ModuleTest, TheObjectHasNoParent)
{
    EXPECT_EQ(object->parent(), nullptr);
}

TEST_F(ModuleTest, AnswersTheHostsCasts)
{
    auto* const system = dynamic_cast<BasicLoyaltySystem*>(object.get());
    ASSERT_NE(system, nullptr) << "the type information is shared with the host library";
    EXPECT_EQ(object->qt_metacast(nullptr), nullptr);
    EXPECT_EQ(object->qt_metacast("Orva"), object.get());
    EXPECT_EQ(object->qt_metacast("BasicLoyaltySystem"), system);
    EXPECT_EQ(object->qt_metacast("LoyaltySystem"), system);
    EXPECT_EQ(object->qt_metacast(ABSTRACT_PLUGIN_IID), dynamic_cast<BasicPlugin*>(object.get()));
    EXPECT_EQ(object->qt_metacast("QObject"), object.get());
    EXPECT_EQ(object->qt_metacast("Unknown"), nullptr);
    EXPECT_EQ(object->qt_metacast("BasicPlugin"), nullptr);
    EXPECT_EQ(object->qt_metacast("AbstractPlugin"), nullptr);
    EXPECT_EQ(object->qt_metacast(""), nullptr);
    EXPECT_EQ(qobject_cast<BasicLoyaltySystem*>(object.get()), system);
    EXPECT_EQ(qobject_cast<BasicPlugin*>(object.get()), static_cast<BasicPlugin*>(system));
}

TEST_F(ModuleTest, ItsMetaObjectAddsNothing)
{
    const QMetaObject* const meta = object->metaObject();
    EXPECT_STREQ(meta->className(), "Orva");
    EXPECT_EQ(meta->superClass(), &QObject::staticMetaObject);
    EXPECT_EQ(meta->methodCount(), meta->methodOffset());
    EXPECT_EQ(meta->propertyCount(), meta->propertyOffset());
    EXPECT_TRUE(object->inherits("Orva"));
}

TEST_F(ModuleTest, ItsMetaTypeMakesFurtherObjects)
{
    const QMetaType type = object->metaObject()->metaType();
    auto* const made = type.create();
    ASSERT_NE(made, nullptr);
    EXPECT_NE(made, object.get());
    auto* const system =
        static_cast<BasicLoyaltySystem*>(static_cast<QObject*>(made)->qt_metacast("LoyaltySystem"));
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(system->getLoyaltySystemType(), 15);
    type.destroy(made);
    EXPECT_EQ(loader.instance(), object) << "the instance is another object";
}

TEST_F(ModuleTest, ACallOfQtsMetaSystemGoesToQObject)
{
    object->setObjectName(u"before"_s);
    EXPECT_TRUE(object->setProperty("objectName", u"after"_s));
    EXPECT_EQ(object->objectName(), u"after"_s);
    // indices beyond those of QObject are handed back, counted from its end
    const int beyond = QObject::staticMetaObject.methodCount() + 3;
    EXPECT_EQ(object->qt_metacall(QMetaObject::InvokeMetaMethod, beyond, nullptr), 3);
}

TEST_F(ModuleTest, DeletingTheObjectDeregistersIt)
{
    auto* const plugin = qobject_cast<BasicPlugin*>(object.get());
    ASSERT_NE(plugin, nullptr);
    EXPECT_TRUE(plugin->init());
    EXPECT_EQ(LoyaltySystems::find(15), qobject_cast<BasicLoyaltySystem*>(object.get()));
    delete object.get();
    EXPECT_EQ(LoyaltySystems::find(15), nullptr);
}

TEST(Module, UnloadingTakesTheObjectWithIt)
{
    // a copy, which nothing else in this process holds
    const QTemporaryDir folder;
    const QString copy = folder.filePath(u"liborva.so"_s);
    ASSERT_TRUE(QFile::copy(QStringLiteral(ORVA_PLUGIN_FILE), copy));
    QPluginLoader loader(copy);
    const QPointer<QObject> object = loader.instance();
    ASSERT_FALSE(object.isNull()) << loader.errorString().toStdString();
    EXPECT_TRUE(loader.unload()) << loader.errorString().toStdString();
    EXPECT_TRUE(object.isNull());
    EXPECT_FALSE(loader.isLoaded());
    const QPointer<QObject> later = loader.instance();
    ASSERT_FALSE(later.isNull()) << loader.errorString().toStdString();
    EXPECT_NE(qobject_cast<BasicLoyaltySystem*>(later.get()), nullptr);
    delete later.get();
}

} // namespace
