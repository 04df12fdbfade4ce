// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/plugin/orvatest.h"

#include <QMetaType>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using namespace tests;

TEST(Construction, KnowsItsCodeAndItsOption)
{
    const OpenOrva orva;
    EXPECT_EQ(orva.loyaltySystemType, 15);
    for (int option = -1; option <= 64; ++option) {
        EXPECT_EQ(orva.checkOption(static_cast<LoyaltySystemOption>(option)), option == 16)
            << option;
    }
}

TEST(Construction, MakesAClientOfItsOwn)
{
    const OpenOrva first;
    const OpenOrva second;
    ASSERT_FALSE(first.interface.isNull());
    ASSERT_FALSE(second.interface.isNull());
    EXPECT_NE(first.interface, second.interface);
    EXPECT_TRUE(first.interface->getLastResponse().documentElement().isNull());
}

TEST(Construction, TakesTheLoggerOrva)
{
    const OpenOrva orva;
    ASSERT_NE(orva.logger, nullptr);
    EXPECT_EQ(orva.logger, Log4Qt::LogManager::logger(u"orva"_s));
    EXPECT_EQ(orva.logger->name(), u"orva"_s);
}

TEST(Construction, WritesNoLogLine)
{
    const Journal journal;
    const OpenOrva orva;
    EXPECT_EQ(journal.entries(), QStringList());
}

TEST(Construction, LeavesTheRestOfTheBaseEmpty)
{
    OpenOrva orva;
    EXPECT_EQ(orva.parent(), nullptr);
    EXPECT_EQ(orva.pointsForSpend, 0.0);
    EXPECT_EQ(orva.pointsForEarn, 0.0);
    EXPECT_TRUE(orva.getDiscountImpacts().isEmpty());
    EXPECT_TRUE(orva.getBonusImpactsForSpend().isEmpty());
    EXPECT_TRUE(orva.getBonusRecords().isEmpty());
    EXPECT_TRUE(orva.getMessagesToCashier().isEmpty());
    EXPECT_TRUE(orva.getMessagesToClient().isEmpty());
    EXPECT_TRUE(orva.getLastErrorString().isEmpty());
    EXPECT_TRUE(orva.document.isNull());
}

/// Makes an object whose client notes its end.
std::unique_ptr<OpenOrva> watched(bool& clientIsGone)
{
    const auto interface = QSharedPointer<RecordingInterface>::create();
    interface->onDestruction = [&clientIsGone] { clientIsGone = true; };
    auto orva = std::make_unique<OpenOrva>();
    orva->interface = interface;
    return orva;
}

TEST(Destruction, ReleasesTheClientThroughEachOfItsBases)
{
    bool gone = false;
    delete watched(gone).release();
    EXPECT_TRUE(gone) << "as Orva";
    gone = false;
    delete static_cast<QObject*>(watched(gone).release());
    EXPECT_TRUE(gone) << "as QObject";
    gone = false;
    delete static_cast<BasicLoyaltySystem*>(watched(gone).release());
    EXPECT_TRUE(gone) << "as BasicLoyaltySystem";
    gone = false;
    delete static_cast<DocumentWatcher*>(watched(gone).release());
    EXPECT_TRUE(gone) << "as DocumentWatcher";
    gone = false;
    delete static_cast<BasicPlugin*>(watched(gone).release());
    EXPECT_TRUE(gone) << "as BasicPlugin";
}

TEST(Destruction, LeavesAClientThatSomebodyElseHolds)
{
    bool gone = false;
    auto orva = watched(gone);
    auto held = orva->interface;
    orva.reset();
    EXPECT_FALSE(gone);
    held.reset();
    EXPECT_TRUE(gone);
}

TEST(MetaObject, NamesTheClassAndAddsNothing)
{
    const QMetaObject& meta = Orva::staticMetaObject;
    EXPECT_STREQ(meta.className(), "Orva");
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    EXPECT_EQ(meta.methodCount(), meta.methodOffset());
    EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
    EXPECT_EQ(meta.enumeratorCount(), meta.enumeratorOffset());
    EXPECT_EQ(meta.classInfoCount(), meta.classInfoOffset());
    EXPECT_EQ(meta.constructorCount(), 0);
}

TEST(MetaType, MakesObjectsByDefaultConstruction)
{
    const QMetaType type = Orva::staticMetaObject.metaType();
    ASSERT_TRUE(type.isValid());
    EXPECT_EQ(type, QMetaType::fromType<Orva>());
    EXPECT_STREQ(type.name(), "Orva");
    auto* const made = static_cast<Orva*>(type.create());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getLoyaltySystemType(), 15);
    EXPECT_TRUE(made->checkOption(static_cast<LoyaltySystemOption>(16)));
    type.destroy(made);
}

TEST(MetaCast, AnswersInTheOrderOfTheNames)
{
    Orva orva;
    QObject* const object = &orva;
    EXPECT_EQ(object->qt_metacast(nullptr), nullptr);
    EXPECT_EQ(object->qt_metacast("Orva"), &orva);
    EXPECT_EQ(object->qt_metacast("BasicLoyaltySystem"), static_cast<BasicLoyaltySystem*>(&orva));
    EXPECT_EQ(object->qt_metacast("LoyaltySystem"), static_cast<BasicLoyaltySystem*>(&orva));
    EXPECT_EQ(object->qt_metacast(ABSTRACT_PLUGIN_IID), static_cast<BasicPlugin*>(&orva));
    EXPECT_EQ(object->qt_metacast("QObject"), object);
    for (const char* const other : {"", "orva", "BasicPlugin", "DocumentWatcher", "AbstractPlugin",
                                    "OpenOrva", "Orva ", "QPlugin"}) {
        EXPECT_EQ(object->qt_metacast(other), nullptr) << '"' << other << '"';
    }
}

TEST(MetaCast, ServesQtsOwnCasts)
{
    Orva orva;
    QObject* const object = &orva;
    EXPECT_EQ(qobject_cast<Orva*>(object), &orva);
    EXPECT_EQ(qobject_cast<BasicLoyaltySystem*>(object), static_cast<BasicLoyaltySystem*>(&orva));
    EXPECT_EQ(qobject_cast<BasicPlugin*>(object), static_cast<BasicPlugin*>(&orva));
    QObject other;
    EXPECT_EQ(qobject_cast<BasicLoyaltySystem*>(&other), nullptr);
}

} // namespace
