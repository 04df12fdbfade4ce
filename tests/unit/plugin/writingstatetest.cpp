// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/plugin/restoring.h"

#include <QMetaProperty>

using namespace Qt::StringLiterals;

namespace {

using namespace tests;

class WritingStateTest : public OrvaTest
{
protected:
    QVariant written(const QString& key) const
    {
        return open->pluginData.value(u"Orva"_s).value(key);
    }

    /// The record as the document must keep it.
    static QVariantMap mapOf(const DocumentBonusRecord& kept)
    {
        return {{u"cardNumber"_s, kept.cardNumber},   {u"position"_s, kept.position},
                {u"bonusAmount"_s, kept.bonusAmount}, {u"valutCode"_s, kept.valutCode},
                {u"dateTime"_s, kept.dateTime},       {u"sessionContext"_s, kept.sessionContext},
                {u"accrual"_s, kept.accrual}};
    }
};

TEST_F(WritingStateTest, WritesBothKeysIntoTheSessionsDocument)
{
    orva.updatePluginData();
    EXPECT_EQ(journal.entries(), writingOfState());
    EXPECT_EQ(open->pluginData.keys(), QStringList{u"Orva"_s});
    EXPECT_EQ(open->pluginData.value(u"Orva"_s).keys(),
              (QStringList{u"bonusRecords"_s, u"lastResponse"_s}));
    EXPECT_TRUE(base->pluginData.isEmpty());
}

TEST_F(WritingStateTest, TheLastResponseIsTextIndentedByOneBlankALevel)
{
    QDomDocument answer;
    ASSERT_TRUE(answer.setContent(u"<a><b><c>1</c></b><d x=\"&lt;\"/></a>"_s));
    interface->setLastResponse(answer);
    orva.updatePluginData();
    EXPECT_EQ(written(u"lastResponse"_s).typeId(), QMetaType::QString);
    EXPECT_EQ(written(u"lastResponse"_s).toString(),
              u"<a>\n <b>\n  <c>1</c>\n </b>\n <d x=\"&lt;\"/>\n</a>\n"_s);
}

TEST_F(WritingStateTest, WithoutALastResponseTheTextIsEmpty)
{
    orva.updatePluginData();
    EXPECT_EQ(written(u"lastResponse"_s).typeId(), QMetaType::QString);
    EXPECT_EQ(written(u"lastResponse"_s).toString(), QString());
}

TEST_F(WritingStateTest, WithoutRecordsAnEmptyListIsStored)
{
    orva.updatePluginData();
    EXPECT_EQ(written(u"bonusRecords"_s).typeId(), QMetaType::QVariantList);
    EXPECT_EQ(written(u"bonusRecords"_s).toList(), QVariantList());
}

TEST_F(WritingStateTest, ARecordBecomesAMapOfAllItsProperties)
{
    orva.bonusRecords = {filledRecord()};
    orva.updatePluginData();
    const QVariantList list = written(u"bonusRecords"_s).toList();
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list.at(0).typeId(), QMetaType::QVariantMap);
    const QVariantMap map = list.at(0).toMap();
    EXPECT_EQ(map, mapOf(filledRecord()));
    EXPECT_EQ(map.size(), DocumentBonusRecord::staticMetaObject.propertyCount());
}

TEST_F(WritingStateTest, EveryPropertyIsStoredUnderItsNameWithItsType)
{
    orva.bonusRecords = {filledRecord()};
    orva.updatePluginData();
    const QVariantMap map = written(u"bonusRecords"_s).toList().at(0).toMap();
    const DocumentBonusRecord filled = filledRecord();
    const QMetaObject& gadget = DocumentBonusRecord::staticMetaObject;
    for (int i = 0; i < gadget.propertyCount(); ++i) {
        const QString name = QString::fromLatin1(gadget.property(i).name());
        const QVariant expected = gadget.property(i).readOnGadget(&filled);
        EXPECT_EQ(map.value(name), expected) << name.toStdString();
        EXPECT_EQ(map.value(name).metaType(), expected.metaType()) << name.toStdString();
    }
    EXPECT_EQ(map.value(u"position"_s).typeId(), QMetaType::Int);
    EXPECT_EQ(map.value(u"bonusAmount"_s).typeId(), QMetaType::Double);
}

TEST_F(WritingStateTest, ADefaultRecordStillHasAllItsKeys)
{
    orva.bonusRecords = {DocumentBonusRecord()};
    orva.updatePluginData();
    const QVariantMap map = written(u"bonusRecords"_s).toList().at(0).toMap();
    EXPECT_EQ(map.keys(), mapOf(DocumentBonusRecord()).keys());
    EXPECT_FALSE(map.value(u"position"_s).isValid());
    EXPECT_FALSE(map.value(u"dateTime"_s).toDateTime().isValid());
}

TEST_F(WritingStateTest, RecordsKeepTheOrderOfTheList)
{
    orva.bonusRecords = {bonusRecord(3, 9), bonusRecord(1, 1), bonusRecord(3, 9)};
    orva.updatePluginData();
    EXPECT_EQ(written(u"bonusRecords"_s).toList(),
              (QVariantList{mapOf(bonusRecord(3, 9)), mapOf(bonusRecord(1, 1)),
                            mapOf(bonusRecord(3, 9))}));
}

TEST_F(WritingStateTest, WhatWasWrittenBeforeIsReplacedWhole)
{
    orva.bonusRecords = {filledRecord(), filledRecord()};
    orva.updatePluginData();
    orva.bonusRecords = {bonusRecord(1)};
    orva.updatePluginData();
    EXPECT_EQ(written(u"bonusRecords"_s).toList(), QVariantList{mapOf(bonusRecord(1))});
}

TEST_F(WritingStateTest, OtherOwnersAndKeysStay)
{
    open->pluginData = {{u"Orva"_s, {{u"own"_s, 1}}}, {u"Other"_s, {{u"lastResponse"_s, 2}}}};
    orva.updatePluginData();
    EXPECT_EQ(written(u"own"_s), QVariant(1));
    EXPECT_EQ(open->pluginData.value(u"Other"_s), (QVariantMap{{u"lastResponse"_s, 2}}));
}

TEST_F(WritingStateTest, ChangesNothingInTheBase)
{
    fillState();
    const State before(orva);
    orva.updatePluginData();
    EXPECT_EQ(State(orva), before);
}

TEST_F(WritingStateTest, NothingButTheTwoKeysIsStored)
{
    fillState();
    orva.updatePluginData();
    EXPECT_EQ(open->pluginData.value(u"Orva"_s).size(), 2)
        << "impacts, messages and points are not kept";
}

TEST_F(WritingStateTest, AFailureOfTheFirstKeyKeepsTheSecondFromBeingWritten)
{
    open->onCall = [](const QString&) { throw std::runtime_error("full"); };
    EXPECT_THROW(orva.updatePluginData(), std::runtime_error);
    EXPECT_EQ(journal.entries(), writingOfState().mid(0, 4));
    EXPECT_TRUE(open->pluginData.isEmpty());
}

TEST_F(WritingStateTest, AFailureOfTheSecondKeyLeavesTheFirst)
{
    open->onCall = [](const QString& call) {
        if (call.contains(u"bonusRecords")) {
            throw std::runtime_error("full");
        }
    };
    EXPECT_THROW(orva.updatePluginData(), std::runtime_error);
    EXPECT_EQ(open->pluginData.value(u"Orva"_s).keys(), QStringList{u"lastResponse"_s});
}

TEST_F(WritingStateTest, AFailureOfTheSessionPasses)
{
    session.onCall = [](const QString&) {
        throw orva::Exception(tr::Tr(u"code"_s, u"текст"_s), u"x"_s);
    };
    EXPECT_THROW(orva.updatePluginData(), orva::Exception);
    EXPECT_EQ(journal.entries(), writingOfState().mid(0, 2)) << "nor is it logged here";
    EXPECT_TRUE(orva.lastError.isEmpty());
}

} // namespace
