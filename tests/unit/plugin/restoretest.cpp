// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/plugin/restoring.h"

#include <QMetaProperty>

using namespace Qt::StringLiterals;

namespace {

using namespace tests;

class RestoreTest : public Restoring
{
protected:
    /// Restores from a list with that one element and answers the record that came of it.
    DocumentBonusRecord restoredFrom(const QVariant& element)
    {
        orva.bonusRecords.clear();
        store(u"bonusRecords"_s, QVariantList{element});
        EXPECT_TRUE(restore());
        EXPECT_EQ(orva.bonusRecords.size(), 1);
        return orva.bonusRecords.value(0);
    }

    static QVariantMap filledMap()
    {
        const DocumentBonusRecord filled = filledRecord();
        QVariantMap map;
        const QMetaObject& gadget = DocumentBonusRecord::staticMetaObject;
        for (int i = 0; i < gadget.propertyCount(); ++i) {
            map.insert(QString::fromLatin1(gadget.property(i).name()),
                       gadget.property(i).readOnGadget(&filled));
        }
        return map;
    }

    const QStringList calls{
        u"debug: Восстановление данных системы лояльности из документа"_s,
        u"base.getCardRecord(15)"_s, u"base.getPluginValue(Orva, lastResponse)"_s,
        u"base.getPluginValue(Orva, bonusRecords)"_s, u"base.refreshLoyaltyData()"_s};
};

TEST_F(RestoreTest, ReadsEverythingFromTheBasesDocument)
{
    EXPECT_TRUE(restore());
    EXPECT_EQ(journal.entries(), calls);
    EXPECT_TRUE(base->defaultWasInvalid);
    EXPECT_TRUE(base->pluginData.isEmpty());
}

TEST_F(RestoreTest, WithoutStoredDataLeavesAnEmptyAnswerAndNoNewRecords)
{
    record->setPointsForSpend(150.5);
    record->setPointsForEarn(8.25);
    EXPECT_TRUE(restore());
    EXPECT_TRUE(interface->getLastResponse().documentElement().isNull());
    EXPECT_EQ(interface->storedResponse(), QString());
    EXPECT_TRUE(orva.bonusRecords.isEmpty());
    EXPECT_EQ(orva.pointsForSpend, 150.5);
    EXPECT_EQ(orva.pointsForEarn, 8.25);
}

TEST_F(RestoreTest, ReadsPointsToEarnAsANumber)
{
    const std::pair<QVariant, double> readings[] = {
        {12.5, 12.5},    {7, 7.0},          {u"12.5"_s, 12.5}, {u"12,5"_s, 0.0},
        {u"нет"_s, 0.0}, {QVariant(), 0.0}, {-3.25, -3.25},    {QVariantMap(), 0.0}};
    for (const auto& [value, expected] : readings) {
        orva.pointsForEarn = 99;
        record->setPointsForEarn(value);
        EXPECT_TRUE(restore());
        EXPECT_EQ(orva.pointsForEarn, expected) << ::testing::PrintToString(value);
    }
}

TEST_F(RestoreTest, AnUnreadableAnswerKeepsNoRecordBack)
{
    store(u"lastResponse"_s, u"<!DOCTYPE a><a/>"_s);
    store(u"bonusRecords"_s, QVariantList{filledMap()});
    EXPECT_TRUE(restore());
    EXPECT_EQ(orva.bonusRecords, QList<DocumentBonusRecord>{filledRecord()});
}

TEST_F(RestoreTest, EveryPropertyComesBack)
{
    EXPECT_EQ(restoredFrom(filledMap()), filledRecord());
}

TEST_F(RestoreTest, RecordsComeBackInTheOrderOfTheList)
{
    store(u"bonusRecords"_s, QVariantList{QVariantMap{{u"bonusAmount"_s, 3.0}}, filledMap(),
                                          QVariantMap{{u"bonusAmount"_s, 1.0}}});
    EXPECT_TRUE(restore());
    ASSERT_EQ(orva.bonusRecords.size(), 3);
    EXPECT_EQ(orva.bonusRecords.at(0).bonusAmount, 3.0);
    EXPECT_EQ(orva.bonusRecords.at(1), filledRecord());
    EXPECT_EQ(orva.bonusRecords.at(2).bonusAmount, 1.0);
}

TEST_F(RestoreTest, AKeyThatIsNoPropertyIsSkipped)
{
    QVariantMap map = filledMap();
    map.insert(u"aFirst"_s, 1);
    map.insert(u"bonusamount"_s, 99.0);
    map.insert(u"objectName"_s, u"x"_s);
    map.insert(QString(), 1);
    map.insert(u"сумма"_s, 99.0);
    map.insert(u"zLast"_s, QVariantList{1});
    EXPECT_EQ(restoredFrom(map), filledRecord());
}

TEST_F(RestoreTest, KeysThatAreMissingLeaveTheDefaults)
{
    DocumentBonusRecord expected;
    expected.valutCode = 1200;
    EXPECT_EQ(restoredFrom(QVariantMap{{u"valutCode"_s, 1200}}), expected);
}

TEST_F(RestoreTest, AValueThatThePropertyDoesNotTakeLeavesIt)
{
    const std::pair<QString, QVariant> refused[] = {{u"bonusAmount"_s, u"много"_s},
                                                    {u"bonusAmount"_s, QVariantMap{{u"a"_s, 1}}},
                                                    {u"valutCode"_s, u"12 рублей"_s},
                                                    {u"valutCode"_s, QDateTime::currentDateTime()},
                                                    {u"dateTime"_s, 5},
                                                    {u"dateTime"_s, QVariantList{1}},
                                                    {u"cardNumber"_s, QVariantMap()},
                                                    {u"accrual"_s, QVariantList{true}}};
    for (const auto& [key, value] : refused) {
        DocumentBonusRecord expected = filledRecord();
        const DocumentBonusRecord empty;
        QVariantMap map = filledMap();
        map.insert(key, value);
        const QMetaObject& gadget = DocumentBonusRecord::staticMetaObject;
        const QMetaProperty property =
            gadget.property(gadget.indexOfProperty(key.toLatin1().constData()));
        ASSERT_TRUE(property.writeOnGadget(&expected, property.readOnGadget(&empty)));
        EXPECT_EQ(restoredFrom(map), expected)
            << key.toStdString() << " from " << ::testing::PrintToString(value);
    }
}

TEST_F(RestoreTest, AValueThatConvertsIsTaken)
{
    EXPECT_EQ(restoredFrom(QVariantMap{{u"bonusAmount"_s, u"8.5"_s}}).bonusAmount, 8.5);
    EXPECT_EQ(restoredFrom(QVariantMap{{u"bonusAmount"_s, 8}}).bonusAmount, 8.0);
    EXPECT_EQ(restoredFrom(QVariantMap{{u"valutCode"_s, u"1200"_s}}).valutCode, 1200);
    EXPECT_EQ(restoredFrom(QVariantMap{{u"cardNumber"_s, 77}}).cardNumber, u"77"_s);
    EXPECT_EQ(restoredFrom(QVariantMap{{u"position"_s, u"3"_s}}).position, QVariant(u"3"_s))
        << "a variant takes everything as it is";
}

TEST_F(RestoreTest, AnElementThatIsNoMapBecomesADefaultRecord)
{
    for (const QVariant& element :
         {QVariant(), QVariant(5), QVariant(u"x"_s), QVariant(QVariantList{1})}) {
        EXPECT_EQ(restoredFrom(element), DocumentBonusRecord())
            << ::testing::PrintToString(element);
    }
}

TEST_F(RestoreTest, AStoredValueThatIsNoListIsConvertedToOne)
{
    for (const QVariant& value : {QVariant(), QVariant(5), QVariant(1.5), QVariant(QVariantMap()),
                                  QVariant(QStringList{u"a"_s, u"b"_s}), QVariant(u"x"_s)}) {
        orva.bonusRecords.clear();
        store(u"bonusRecords"_s, value);
        EXPECT_TRUE(restore());
        EXPECT_EQ(orva.bonusRecords, QList<DocumentBonusRecord>(value.toList().size()))
            << ::testing::PrintToString(value);
    }
    store(u"bonusRecords"_s, 5);
    orva.bonusRecords.clear();
    EXPECT_TRUE(restore());
    EXPECT_TRUE(orva.bonusRecords.isEmpty()) << "a number is no list at all";
}

TEST_F(RestoreTest, RecordsAreAddedToThoseAlreadyHeld)
{
    orva.bonusRecords = {bonusRecord(1)};
    store(u"bonusRecords"_s, QVariantList{filledMap()});
    EXPECT_TRUE(restore());
    EXPECT_EQ(orva.bonusRecords, (QList<DocumentBonusRecord>{bonusRecord(1), filledRecord()}));
}

TEST_F(RestoreTest, RestoringTwiceDoublesTheRecords)
{
    store(u"bonusRecords"_s, QVariantList{filledMap(), QVariantMap()});
    EXPECT_TRUE(restore());
    EXPECT_TRUE(restore());
    EXPECT_EQ(orva.bonusRecords,
              (QList<DocumentBonusRecord>{filledRecord(), {}, filledRecord(), {}}));
}

TEST_F(RestoreTest, ImpactsAndMessagesStay)
{
    fillState();
    State expected(orva);
    expected.pointsForSpend = 20;
    expected.pointsForEarn = 2;
    record->setPointsForSpend(20);
    record->setPointsForEarn(2.0);
    EXPECT_TRUE(restore());
    EXPECT_EQ(State(orva), expected);
    EXPECT_EQ(orva.getLastErrorString(), oldError);
}

TEST_F(RestoreTest, RefreshesTheDocumentWhenEverythingIsRestored)
{
    store(u"lastResponse"_s, u"<later/>"_s);
    store(u"bonusRecords"_s, QVariantList{filledMap()});
    record->setPointsForSpend(20);
    QString responseThen;
    qsizetype recordsThen = 0;
    double pointsThen = 0;
    base->onCall = [&](const QString& call) {
        if (call == u"refreshLoyaltyData()") {
            responseThen = interface->storedResponse();
            recordsThen = orva.bonusRecords.size();
            pointsThen = orva.pointsForSpend;
        }
    };
    EXPECT_TRUE(restore());
    EXPECT_EQ(responseThen, u"<later/>\n"_s);
    EXPECT_EQ(recordsThen, 1);
    EXPECT_EQ(pointsThen, 20.0);
}

TEST_F(RestoreTest, ExceptionsOfTheDocumentPass)
{
    for (const QString& failing : calls.mid(1)) {
        base->onCall = [failing](const QString& call) {
            if (failing.endsWith(call)) {
                throw orva::Exception(tr::Tr(u"code"_s, u"текст"_s), u"x"_s);
            }
        };
        journal.clear();
        EXPECT_THROW(restore(), orva::Exception) << failing.toStdString();
        EXPECT_EQ(journal.entries(), calls.mid(0, calls.indexOf(failing) + 1));
    }
    EXPECT_TRUE(orva.lastError.isEmpty());
}

TEST_F(RestoreTest, TheAnswerThatWasReadStaysWhenTheRecordsCannotBeRead)
{
    store(u"lastResponse"_s, u"<later/>"_s);
    base->onCall = [](const QString& call) {
        if (call == u"getPluginValue(Orva, bonusRecords)") {
            throw orva::Exception(tr::Tr(u"code"_s, u"текст"_s), u"x"_s);
        }
    };
    EXPECT_THROW(restore(), orva::Exception);
    EXPECT_EQ(interface->storedResponse(), u"<later/>\n"_s);
}

TEST_F(RestoreTest, WhatWasWrittenComesBackAndIsWrittenAgainTheSame)
{
    QDomDocument answer;
    ASSERT_TRUE(answer.setContent(
        u"<RawCheck><id>1</id><items><RawItem><id>1</id><t> a &amp; б </t></RawItem></items>"
        "<e/></RawCheck>"_s));
    interface->setLastResponse(answer);
    orva.bonusRecords = {filledRecord(), bonusRecord(0.1, 2), DocumentBonusRecord()};
    orva.updatePluginData();
    base->pluginData = open->pluginData;

    OpenOrva later;
    const auto laterInterface = QSharedPointer<RecordingInterface>::create();
    later.interface = laterInterface;
    later.setDocument(base);
    EXPECT_TRUE(later.restoreLoyaltySystem());
    EXPECT_EQ(later.bonusRecords, orva.bonusRecords);
    EXPECT_EQ(laterInterface->storedResponse(), interface->storedResponse());
    open->pluginData.clear();
    later.updatePluginData();
    EXPECT_EQ(open->pluginData, base->pluginData);
}

} // namespace
