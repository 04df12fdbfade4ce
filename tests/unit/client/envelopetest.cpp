// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "client/exception.h"
#include "host/document/document.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/mockdocument.h"
#include "tests/unit/client/steps.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;
using ::testing::InSequence;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::StrictMock;
using tests::childNames;
using tests::childTexts;

namespace {

using ::testing::_;

QDateTime march()
{
    return QDateTime(QDate(2024, 3, 5), QTime(7, 8, 9, 999));
}

class Envelope : public ::testing::Test
{
protected:
    Envelope()
    {
        document->setDocumentId(u"7d0c2f6e-0001"_s);
        document->setCheckNumber(117);
        document->setDocumentType(EDocumentType::Sale);
        document->setDateTime(QDateTime(QDate(2024, 3, 5), QTime(14, 20, 31)));
        document->setSaleDocumentId(u"7d0c2f6e-0000"_s);
        client.setCashData(u"1042"_s, u"3"_s);
    }
    QDomElement payload() const
    {
        return client.getRequestPayload(document, record).documentElement();
    }
    QString textOf(const QString& name) const { return payload().firstChildElement(name).text(); }

    QSharedPointer<Document> document = QSharedPointer<Document>::create();
    QSharedPointer<DocumentCardRecord> record = tests::cardRecord(u"7700000000017"_s);
    tests::OpenInterface client;
};

/// The same with a document that reports what it is asked.
class EnvelopeCalls : public ::testing::Test
{
protected:
    EnvelopeCalls()
    {
        ON_CALL(*document, getDocumentType()).WillByDefault(Return(1));
        ON_CALL(*document, hasDateTime()).WillByDefault(Return(true));
        ON_CALL(*document, getDateTime()).WillByDefault(Return(march()));
    }
    QDomElement payload() const
    {
        return client.getRequestPayload(document, record).documentElement();
    }
    QString sumAsSent(double sum) const
    {
        EXPECT_CALL(*document, getCheckSum()).WillOnce(Return(sum));
        return payload().firstChildElement(u"total"_s).text();
    }

    QSharedPointer<NiceMock<tests::MockDocument>> document =
        QSharedPointer<NiceMock<tests::MockDocument>>::create();
    QSharedPointer<DocumentCardRecord> record = tests::cardRecord(u"77"_s);
    tests::OpenInterface client;
};

} // namespace

TEST_F(Envelope, ofASaleHasItsElementsInOrder)
{
    EXPECT_EQ(childTexts(payload()),
              (QStringList{u"id=7d0c2f6e-0001"_s, u"number=117"_s, u"pos=3"_s,
                           u"date=2024-03-05 14:20:31"_s, u"chType=1"_s, u"merchantId=1042"_s,
                           u"total=0.00"_s, u"items="_s, u"cardNumber=7700000000017"_s}));
}

TEST_F(Envelope, ofAReturnHasTheOriginalBeforeTheType)
{
    document->setDocumentType(EDocumentType::ReturnBySale);
    EXPECT_EQ(childTexts(payload()),
              (QStringList{u"id=7d0c2f6e-0001"_s, u"number=117"_s, u"pos=3"_s,
                           u"date=2024-03-05 14:20:31"_s, u"originalId=7d0c2f6e-0000"_s,
                           u"chType=2"_s, u"merchantId=1042"_s, u"total=0.00"_s, u"items="_s,
                           u"cardNumber=7700000000017"_s}));
}

TEST_F(Envelope, isADocumentOfTheRootAlone)
{
    const QDomDocument built = client.getRequestPayload(document, record);
    EXPECT_EQ(built.childNodes().size(), 1);
    EXPECT_EQ(built.documentElement().tagName(), u"RawCheck"_s);
    EXPECT_TRUE(built.toString(1).startsWith(u"<RawCheck>\n <id>"_s));
}

TEST_F(Envelope, refusesEveryOtherType)
{
    for (const int type : {0, 2, 24, 26, -1}) {
        document->setDocumentType(type);
        try {
            payload();
            ADD_FAILURE() << "nothing was thrown for type " << type;
        } catch (const orva::Exception& caught) {
            EXPECT_EQ(typeid(caught), typeid(orva::Exception));
            EXPECT_EQ(caught.tr().id(), u"orvaInvalidCheckType"_s);
            EXPECT_EQ(caught.tr().ru(), u"Неподдерживаемый тип чека"_s);
            EXPECT_TRUE(caught.detail.isNull());
        }
    }
}

TEST_F(Envelope, holdsOneTextNodeInEveryElementEvenWhenItIsEmpty)
{
    document->setDocumentType(EDocumentType::ReturnBySale);
    document->setDocumentId(QString());
    document->setSaleDocumentId(QString());
    client.setCashData(QString(), QString());
    const QSharedPointer<Card> noCard;
    record = QSharedPointer<DocumentCardRecord>::create(noCard, 15);
    const QDomElement root = payload();
    for (const QString& name : childNames(root)) {
        if (name != u"items"_s) {
            const QDomElement element = root.firstChildElement(name);
            EXPECT_EQ(element.childNodes().size(), 1) << qPrintable(name);
            EXPECT_TRUE(element.firstChild().isText()) << qPrintable(name);
        }
    }
    EXPECT_EQ(childTexts(root),
              (QStringList{u"id="_s, u"number=117"_s, u"pos="_s, u"date=2024-03-05 14:20:31"_s,
                           u"originalId="_s, u"chType=2"_s, u"merchantId="_s, u"total=0.00"_s,
                           u"items="_s, u"cardNumber="_s}));
}

TEST_F(Envelope, writesTheNumberAsAPlainInteger)
{
    for (const auto& [number, text] :
         {std::pair(0, u"0"_s), std::pair(-7, u"-7"_s), std::pair(1234567, u"1234567"_s)}) {
        document->setCheckNumber(number);
        EXPECT_EQ(textOf(u"number"_s), text);
    }
}

TEST_F(Envelope, takesTheCurrentTimeWhenTheDocumentHasNone)
{
    document->setDateTime(QDateTime());
    StrictMock<tests::MockCurrentTime> clock;
    const tests::Registered<CurrentTime> registration(clock);
    EXPECT_CALL(clock, currentDateTime()).WillOnce(Return(march()));
    EXPECT_EQ(textOf(u"date"_s), u"2024-03-05 07:08:09"_s);
}

TEST_F(Envelope, takesARealClockWhenNoDoubleIsRegistered)
{
    document->setDateTime(QDateTime());
    const QDateTime start = QDateTime::currentDateTime();
    const auto sent = QDateTime::fromString(textOf(u"date"_s), u"yyyy-MM-dd hh:mm:ss"_s);
    EXPECT_TRUE(sent.isValid());
    EXPECT_LT(std::abs(start.secsTo(sent)), 3600);
}

TEST_F(Envelope, leavesTheClockAloneWhenTheDocumentHasItsOwnTime)
{
    StrictMock<tests::MockCurrentTime> clock;
    const tests::Registered<CurrentTime> registration(clock);
    EXPECT_EQ(textOf(u"date"_s), u"2024-03-05 14:20:31"_s);
}

TEST_F(Envelope, writesMidnightAndNoonOnTheTwentyFourHourClock)
{
    document->setDateTime(QDateTime(QDate(2024, 12, 31), QTime(0, 0, 0)));
    EXPECT_EQ(textOf(u"date"_s), u"2024-12-31 00:00:00"_s);
    document->setDateTime(QDateTime(QDate(2024, 12, 31), QTime(12, 0, 0)));
    EXPECT_EQ(textOf(u"date"_s), u"2024-12-31 12:00:00"_s);
}

TEST_F(Envelope, writesNoTimeZone)
{
    document->setDateTime(QDateTime(QDate(2024, 3, 5), QTime(23, 0), QTimeZone::utc()));
    EXPECT_EQ(textOf(u"date"_s), u"2024-03-05 23:00:00"_s);
}

TEST_F(Envelope, listsTheGoodsInDocumentOrder)
{
    document->setGoodsItems({tests::goodsItem({.posnum = 9}), tests::goodsItem({.posnum = 2})});
    const QDomElement items = payload().firstChildElement(u"items"_s);
    EXPECT_EQ(childNames(items), (QStringList{u"RawItem"_s, u"RawItem"_s}));
    EXPECT_EQ(items.firstChildElement().firstChildElement(u"id"_s).text(), u"9"_s);
    EXPECT_EQ(items.lastChildElement().firstChildElement(u"id"_s).text(), u"2"_s);
}

TEST_F(EnvelopeCalls, askASaleInOrder)
{
    StrictMock<tests::Steps> steps;
    const QList<QSharedPointer<GoodsItem>> goods{tests::goodsItem({})};
    const QDomElement items = tests::parse(u"<items><mine/></items>"_s).documentElement();
    auto strict = QSharedPointer<StrictMock<tests::MockDocument>>::create();
    const InSequence order;
    EXPECT_CALL(steps, getRequestPayload(_, _));
    EXPECT_CALL(*strict, getDocumentId()).WillOnce(Return(u"id"_s));
    EXPECT_CALL(*strict, getCheckNumber()).WillOnce(Return(1));
    EXPECT_CALL(*strict, hasDateTime()).WillOnce(Return(true));
    EXPECT_CALL(*strict, getDateTime()).WillOnce(Return(march()));
    EXPECT_CALL(*strict, getDocumentType()).WillOnce(Return(1));
    EXPECT_CALL(*strict, getCheckSum()).WillOnce(Return(2.5));
    EXPECT_CALL(*strict, getGoodsItems()).WillOnce(Return(goods));
    EXPECT_CALL(*strict, getDocumentType()).WillOnce(Return(1));
    EXPECT_CALL(steps, getRequestItems(goods, EDocumentType::Sale)).WillOnce(Return(items));
    const QDomDocument built = steps.getRequestPayload(strict, record);
    EXPECT_FALSE(built.documentElement()
                     .firstChildElement(u"items"_s)
                     .firstChildElement(u"mine"_s)
                     .isNull());
}

TEST_F(EnvelopeCalls, askAReturnForItsSaleAsSoonAsTheTypeIsKnown)
{
    auto strict = QSharedPointer<StrictMock<tests::MockDocument>>::create();
    const InSequence order;
    EXPECT_CALL(*strict, getDocumentId()).WillOnce(Return(u"id"_s));
    EXPECT_CALL(*strict, getCheckNumber()).WillOnce(Return(1));
    EXPECT_CALL(*strict, hasDateTime()).WillOnce(Return(true));
    EXPECT_CALL(*strict, getDateTime()).WillOnce(Return(march()));
    EXPECT_CALL(*strict, getDocumentType()).WillOnce(Return(25));
    EXPECT_CALL(*strict, getSaleDocumentId()).WillOnce(Return(u"sale"_s));
    EXPECT_CALL(*strict, getCheckSum()).WillOnce(Return(2.5));
    EXPECT_CALL(*strict, getGoodsItems()).WillOnce(Return(QList<QSharedPointer<GoodsItem>>()));
    EXPECT_CALL(*strict, getDocumentType()).WillOnce(Return(25));
    const QDomElement root = client.getRequestPayload(strict, record).documentElement();
    EXPECT_EQ(root.firstChildElement(u"originalId"_s).text(), u"sale"_s);
}

TEST_F(EnvelopeCalls, askNothingMoreOnceTheTypeIsRefused)
{
    auto strict = QSharedPointer<StrictMock<tests::MockDocument>>::create();
    const InSequence order;
    EXPECT_CALL(*strict, getDocumentId()).WillOnce(Return(u"id"_s));
    EXPECT_CALL(*strict, getCheckNumber()).WillOnce(Return(1));
    EXPECT_CALL(*strict, hasDateTime()).WillOnce(Return(true));
    EXPECT_CALL(*strict, getDateTime()).WillOnce(Return(march()));
    EXPECT_CALL(*strict, getDocumentType()).WillOnce(Return(24));
    EXPECT_THROW(client.getRequestPayload(strict, record), orva::Exception);
}

TEST_F(EnvelopeCalls, readTheTypeASecondTimeForTheGoodsLines)
{
    NiceMock<tests::Steps> steps;
    EXPECT_CALL(*document, getDocumentType()).WillOnce(Return(1)).WillOnce(Return(25));
    EXPECT_CALL(steps, getRequestItems(_, EDocumentType::ReturnBySale));
    const QDomElement root = steps.getRequestPayload(document, record).documentElement();
    EXPECT_EQ(root.firstChildElement(u"chType"_s).text(), u"1"_s);
}

TEST_F(EnvelopeCalls, writeAnEmptyDateForAnInvalidTime)
{
    EXPECT_CALL(*document, getDateTime()).WillOnce(Return(QDateTime()));
    const QDomElement date = payload().firstChildElement(u"date"_s);
    EXPECT_FALSE(date.isNull());
    EXPECT_EQ(date.text(), u""_s);
}

TEST_F(EnvelopeCalls, writeTheSumWithTwoDecimalsOfItsExactValue)
{
    const QList<QPair<double, QString>> table{
        {1234.5, u"1234.50"_s}, {2.675, u"2.67"_s}, {0.005, u"0.01"_s},
        {-12.5, u"-12.50"_s},   {0, u"0.00"_s},     {345.5, u"345.50"_s},
        {1e6, u"1000000.00"_s}, {1.005, u"1.00"_s}, {1e15, u"1000000000000000.00"_s}};
    for (const auto& [sum, text] : table) {
        EXPECT_EQ(sumAsSent(sum), text);
    }
}

TEST_F(EnvelopeCalls, letTheDocumentsExceptionsPass)
{
    EXPECT_CALL(*document, getCheckSum()).WillOnce([]() -> double { throw std::bad_alloc(); });
    EXPECT_THROW(payload(), std::bad_alloc);
}
