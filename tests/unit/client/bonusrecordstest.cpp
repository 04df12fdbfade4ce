// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "host/services/session.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/steps.h"

using namespace Qt::StringLiterals;
using ::testing::Return;
using ::testing::StrictMock;

namespace {

QDateTime firstTime()
{
    return QDateTime(QDate(2024, 3, 5), QTime(14, 20, 31));
}

QDateTime secondTime()
{
    return firstTime().addMSecs(1);
}

class BonusRecords : public ::testing::Test
{
protected:
    BonusRecords()
    {
        session.setSessionContext(QSharedPointer<SessionContext>::create(QVariant(512)));
    }
    QList<DocumentBonusRecord> read(const QString& lines)
    {
        const QDomDocument answer = tests::parse(u"<a><items>"_s + lines + u"</items></a>"_s);
        return client.getBonusRecords(record, answer.documentElement());
    }
    static QString line(const QString& id, const QString& awardBonus)
    {
        return u"<RawItem><id>"_s + id + u"</id><awards><RawItemAwards><awardBonus>"_s +
               awardBonus + u"</awardBonus></RawItemAwards></awards></RawItem>"_s;
    }

    Session session;
    tests::InSingleton<Session> inPlace{&session};
    QSharedPointer<DocumentCardRecord> record = tests::cardRecord(u"7700000000017"_s);
    orva::Interface client;
};

} // namespace

TEST_F(BonusRecords, haveEveryFieldFilled)
{
    StrictMock<tests::MockCurrentTime> clock;
    const tests::Registered<CurrentTime> registration(clock);
    EXPECT_CALL(clock, currentDateTime()).WillOnce(Return(firstTime()));
    const auto records = read(line(u"4"_s, u"5.255"_s));
    ASSERT_EQ(records.size(), 1);
    const DocumentBonusRecord& accrual = records.first();
    EXPECT_EQ(accrual.cardNumber, u"7700000000017"_s);
    EXPECT_EQ(accrual.position, QVariant(4));
    EXPECT_EQ(accrual.position.typeId(), QMetaType::Int);
    EXPECT_EQ(accrual.bonusAmount, 5.255);
    EXPECT_EQ(accrual.valutCode, 1200);
    EXPECT_EQ(accrual.dateTime, firstTime());
    EXPECT_EQ(accrual.sessionContext, u"512"_s);
    EXPECT_TRUE(accrual.accrual);
}

TEST_F(BonusRecords, shareTheCardNumberButHaveATimeOfTheirOwn)
{
    StrictMock<tests::MockCurrentTime> clock;
    const tests::Registered<CurrentTime> registration(clock);
    EXPECT_CALL(clock, currentDateTime())
        .WillOnce(Return(firstTime()))
        .WillOnce(Return(secondTime()));
    const auto records =
        read(line(u"1"_s, u"1"_s) + line(u"2"_s, u"0.004"_s) + line(u"3"_s, u"2"_s));
    ASSERT_EQ(records.size(), 2);
    EXPECT_EQ(records.at(0).dateTime, firstTime());
    EXPECT_EQ(records.at(1).dateTime, secondTime());
    EXPECT_EQ(records.at(0).cardNumber, u"7700000000017"_s);
    EXPECT_EQ(records.at(1).cardNumber, u"7700000000017"_s);
}

TEST_F(BonusRecords, areNoneInAnAnswerWithoutItems)
{
    for (const QString& xml : {u"<a/>"_s, u"<a><items/></a>"_s}) {
        const QDomDocument answer = tests::parse(xml);
        EXPECT_TRUE(client.getBonusRecords(record, answer.documentElement()).isEmpty());
    }
    EXPECT_TRUE(client.getBonusRecords(record, QDomElement()).isEmpty());
}

TEST_F(BonusRecords, areDroppedBelowHalfAKopeckInSizeOnly)
{
    for (const QString& amount :
         {u"0.004"_s, u"-0.004"_s, u"0.00499"_s, u"0"_s, u""_s, u"много"_s, u"3,5"_s}) {
        EXPECT_TRUE(read(line(u"1"_s, amount)).isEmpty()) << qPrintable(amount);
    }
    const QList<QPair<QString, double>> kept{
        {u"0.005"_s, 0.005}, {u"-0.005"_s, -0.005}, {u"-3.5"_s, -3.5}, {u"1.23456"_s, 1.23456}};
    for (const auto& [text, amount] : kept) {
        const auto records = read(line(u"1"_s, text));
        ASSERT_EQ(records.size(), 1) << qPrintable(text);
        EXPECT_EQ(records.first().bonusAmount, amount);
    }
}

TEST_F(BonusRecords, standInTheOrderOfTheLinesOneForEachLine)
{
    QStringList found;
    for (const DocumentBonusRecord& accrual :
         read(line(u"3"_s, u"1"_s) + line(u"1"_s, u"2"_s) + line(u"3"_s, u"3"_s))) {
        found.append(accrual.position.toString() + u": "_s + QString::number(accrual.bonusAmount));
    }
    EXPECT_EQ(found, (QStringList{u"3: 1"_s, u"1: 2"_s, u"3: 3"_s}));
}

TEST_F(BonusRecords, haveThePositionZeroWithoutAReadableId)
{
    for (const QString& id : {u"x"_s, u""_s, u"2147483648"_s, u"99999999999999999999"_s}) {
        const auto records = read(line(id, u"1"_s));
        ASSERT_EQ(records.size(), 1) << qPrintable(id);
        EXPECT_EQ(records.first().position, QVariant(0)) << qPrintable(id);
    }
    const auto records = read(u"<RawItem><awards><RawItemAwards><awardBonus>1</awardBonus>"
                              "</RawItemAwards></awards></RawItem>"_s);
    ASSERT_EQ(records.size(), 1);
    EXPECT_EQ(records.first().position, QVariant(0));
}

TEST_F(BonusRecords, areReadFromTheWholeTextOfIdAndAmountAndFromTextOnly)
{
    const QList<QPair<QString, int>> texts{
        {u"12"_s, 12},        {u"1<!-- 5 -->2"_s, 12},   {u"<x>12</x>"_s, 12},
        {u"1<x>2</x>"_s, 12}, {u"<![CDATA[12]]>"_s, 12}, {u"1<![CDATA[2]]>"_s, 12},
        {u"<x/>12"_s, 12},    {u"<!-- 12 -->"_s, 0},     {u"<?x 12?>"_s, 0}};
    for (const auto& [text, value] : texts) {
        const auto records = read(line(text, u"1"_s) + line(u"7"_s, text));
        ASSERT_EQ(records.size(), value == 0 ? 1 : 2) << qPrintable(text);
        EXPECT_EQ(records.constFirst().position, QVariant(value)) << qPrintable(text);
        EXPECT_EQ(records.constLast().bonusAmount, value == 0 ? 1 : value) << qPrintable(text);
    }
}

TEST_F(BonusRecords, areReadFromTheFirstAwardsOnly)
{
    const auto records =
        read(u"<RawItem><id>1</id><awards><RawItemAwards><awardBonus>3</awardBonus>"
             "</RawItemAwards><RawItemAwards><awardBonus>5</awardBonus></RawItemAwards>"
             "</awards></RawItem>"_s);
    ASSERT_EQ(records.size(), 1);
    EXPECT_EQ(records.first().bonusAmount, 3);
    EXPECT_TRUE(read(u"<RawItem><id>1</id><awards><RawItemAwards/><RawItemAwards><awardBonus>5"
                     "</awardBonus></RawItemAwards></awards></RawItem>"_s)
                    .isEmpty());
    EXPECT_TRUE(read(u"<RawItem><id>1</id><awards/><awards><RawItemAwards><awardBonus>5"
                     "</awardBonus></RawItemAwards></awards></RawItem>"_s)
                    .isEmpty());
}

TEST_F(BonusRecords, takeTheSessionsValueAsText)
{
    session.setSessionContext(QSharedPointer<SessionContext>::create(QVariant(u"смена 7"_s)));
    EXPECT_EQ(read(line(u"1"_s, u"1"_s)).constFirst().sessionContext, u"смена 7"_s);
    session.setSessionContext(QSharedPointer<SessionContext>::create());
    EXPECT_EQ(read(line(u"1"_s, u"1"_s)).constFirst().sessionContext, u""_s);
}

TEST_F(BonusRecords, makeASessionWhereTheHostHasNone)
{
    const tests::InSingleton<Session> none(nullptr);
    const auto records = read(line(u"1"_s, u"1"_s));
    ASSERT_EQ(records.size(), 1);
    EXPECT_EQ(records.first().sessionContext, u""_s);
    EXPECT_NE(Singleton<Session>::instance, nullptr);
}
