// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/recordingwrapper.h"
#include "tests/unit/client/steps.h"

using namespace Qt::StringLiterals;
using ::testing::NiceMock;
using tests::childNames;
using tests::childTexts;
using tests::Line;

namespace {

using ::testing::_;

class Items : public ::testing::Test
{
protected:
    /// The one line of the element that the client makes for one goods line.
    QDomElement rawItem(const Line& line, EDocumentType type) const
    {
        const QDomElement items = client.getRequestItems({tests::goodsItem(line)}, type);
        EXPECT_EQ(items.tagName(), u"items"_s);
        EXPECT_EQ(childNames(items), QStringList{u"RawItem"_s});
        return items.firstChildElement();
    }
    QDomElement sold(const Line& line) const { return rawItem(line, EDocumentType::Sale); }
    QDomElement returned(const Line& line) const
    {
        return rawItem(line, EDocumentType::ReturnBySale);
    }
    QString priceAsSent(double price) const
    {
        return sold({.price = price}).firstChildElement(u"price"_s).text();
    }

    tests::OpenInterface client;
};

QStringList saleOrder()
{
    return {u"quantity"_s, u"id"_s, u"sku"_s, u"price"_s, u"total"_s, u"minTotal"_s, u"weight"_s};
}

QStringList returnOrder()
{
    return {u"returnedQuantity"_s, u"id"_s,    u"sku"_s, u"price"_s, u"total"_s,
            u"minTotal"_s,         u"weight"_s};
}

} // namespace

TEST_F(Items, ofAPieceSoldHaveTheirElementsInOrder)
{
    const Line line{
        .posnum = 4, .code = u"1001"_s, .quantity = 2, .price = 49.9, .sumb = 99.8, .minPrice = 45};
    EXPECT_EQ(childTexts(sold(line)),
              (QStringList{u"quantity=2.000"_s, u"id=4"_s, u"sku=1001"_s, u"price=49.9"_s,
                           u"total=99.80"_s, u"minTotal=90.00"_s, u"weight=piece"_s}));
}

TEST_F(Items, ofAWeighedLineSayWeight)
{
    const Line line{.quantity = 0.25, .price = 300, .sumb = 75, .fractional = true};
    EXPECT_EQ(childTexts(sold(line)),
              (QStringList{u"quantity=0.250"_s, u"id=1"_s, u"sku=1000"_s, u"price=300"_s,
                           u"total=75.00"_s, u"minTotal=0.00"_s, u"weight=weight"_s}));
}

TEST_F(Items, ofAReturnCarryTheReturnedQuantity)
{
    const Line line{.posnum = 4,
                    .code = u"1001"_s,
                    .quantity = 2,
                    .price = 49.9,
                    .sumb = 49.9,
                    .minPrice = 45,
                    .quantBack = 1.0};
    // the minimum is that of the quantity sold, which is meant
    EXPECT_EQ(childTexts(returned(line)),
              (QStringList{u"returnedQuantity=1.000"_s, u"id=4"_s, u"sku=1001"_s, u"price=49.9"_s,
                           u"total=49.90"_s, u"minTotal=90.00"_s, u"weight=piece"_s}));
}

TEST_F(Items, ofAReturnCarryTheLinesQuantityWhenNoneIsReturned)
{
    EXPECT_EQ(childTexts(returned({.quantity = 2.5})).constFirst(), u"returnedQuantity=2.500"_s);
    const Line typedNull{.quantity = 2.5, .quantBack = QVariant(QMetaType(QMetaType::Double))};
    EXPECT_EQ(childTexts(returned(typedNull)).constFirst(), u"returnedQuantity=2.500"_s);
}

TEST_F(Items, ofAReturnTakeAReturnedQuantityOfZeroForSet)
{
    EXPECT_EQ(childTexts(returned({.quantity = 2.5, .quantBack = 0.0})).constFirst(),
              u"returnedQuantity=0.000"_s);
}

TEST_F(Items, ofAReturnConvertTheReturnedQuantity)
{
    EXPECT_EQ(childTexts(returned({.quantBack = u"1.5"_s})).constFirst(),
              u"returnedQuantity=1.500"_s);
    EXPECT_EQ(childTexts(returned({.quantBack = 3})).constFirst(), u"returnedQuantity=3.000"_s);
    EXPECT_EQ(childTexts(returned({.quantBack = u"none"_s})).constFirst(),
              u"returnedQuantity=0.000"_s);
}

TEST_F(Items, ofAReturnGiveBackThePointsBetweenQuantityAndId)
{
    const QDomElement item = returned({.bonusImpactSum = 12.5});
    QStringList expected = returnOrder();
    expected.insert(1, u"returnedAwards"_s);
    EXPECT_EQ(childNames(item), expected);
    EXPECT_EQ(tests::written(item.firstChildElement(u"returnedAwards"_s)),
              u"<returnedAwards><RawItemReturnedAwards><usedBonusInCurrency>12.50"
              "</usedBonusInCurrency></RawItemReturnedAwards></returnedAwards>"_s);
}

TEST_F(Items, ofAReturnGiveBackNoPointsUpToHalfAKopeck)
{
    for (const double points : {0.0, 0.004, 0.005, -0.01, -12.5}) {
        EXPECT_EQ(childNames(returned({.bonusImpactSum = points})), returnOrder()) << points;
    }
    EXPECT_EQ(returned({.bonusImpactSum = 0.0051}).firstChildElement(u"returnedAwards"_s).text(),
              u"0.01"_s);
}

TEST_F(Items, ofASaleNeverCarryPointsOrReturnedQuantities)
{
    EXPECT_EQ(childNames(sold({.quantBack = 1.0, .bonusImpactSum = 12.5})), saleOrder());
}

TEST_F(Items, ofAnyTypeButAReturnAreThoseOfASale)
{
    for (const int type : {0, 2, 24, 26}) {
        const QDomElement item =
            rawItem({.bonusImpactSum = 12.5}, static_cast<EDocumentType>(type));
        EXPECT_EQ(childNames(item), saleOrder()) << type;
    }
}

TEST_F(Items, writeThePriceWithSixSignificantDigits)
{
    const QList<QPair<double, QString>> table{
        {99.9, u"99.9"_s},         {300, u"300"_s},       {1234567.5, u"1.23457e+06"_s},
        {0.0001, u"0.0001"_s},     {0.00001, u"1e-05"_s}, {123456, u"123456"_s},
        {1000000, u"1e+06"_s},     {0, u"0"_s},           {1234.565, u"1234.57"_s},
        {12345.678, u"12345.7"_s}, {-5.5, u"-5.5"_s}};
    for (const auto& [price, text] : table) {
        EXPECT_EQ(priceAsSent(price), text);
    }
}

TEST_F(Items, writeEveryOtherAmountWithFixedDecimals)
{
    const Line line{.quantity = 1234567.8914, .sumb = 1234567.894, .minPrice = -2};
    const QDomElement item = sold(line);
    EXPECT_EQ(item.firstChildElement(u"quantity"_s).text(), u"1234567.891"_s);
    EXPECT_EQ(item.firstChildElement(u"total"_s).text(), u"1234567.89"_s);
    EXPECT_EQ(item.firstChildElement(u"minTotal"_s).text(), u"-2469135.78"_s);
    EXPECT_EQ(sold({.sumb = 2.675}).firstChildElement(u"total"_s).text(), u"2.67"_s);
    EXPECT_EQ(sold({.quantity = 0.0005}).firstChildElement(u"quantity"_s).text(), u"0.001"_s);
    EXPECT_EQ(sold({.quantity = -1.5}).firstChildElement(u"quantity"_s).text(), u"-1.500"_s);
}

TEST_F(Items, keepTheGoodsCodeAsItIs)
{
    EXPECT_EQ(sold({.code = u" Сыр <& \"х\"> "_s}).firstChildElement(u"sku"_s).text(),
              u" Сыр <& \"х\"> "_s);
    EXPECT_EQ(sold({.code = QString()}).firstChildElement(u"sku"_s).childNodes().size(), 1);
}

TEST_F(Items, areEmptyWithoutGoodsLines)
{
    const QDomElement items = client.getRequestItems({}, EDocumentType::Sale);
    EXPECT_EQ(items.tagName(), u"items"_s);
    EXPECT_FALSE(items.hasChildNodes());
}

TEST_F(Items, belongToNoParentAndStandInListOrder)
{
    const QDomElement items =
        client.getRequestItems({tests::goodsItem({.posnum = 3}), tests::goodsItem({.posnum = 1}),
                                tests::goodsItem({.posnum = 3})},
                               EDocumentType::Sale);
    EXPECT_TRUE(items.parentNode().isNull());
    QStringList ids;
    for (QDomElement item = items.firstChildElement(); !item.isNull();
         item = item.nextSiblingElement()) {
        ids.append(item.firstChildElement(u"id"_s).text());
    }
    EXPECT_EQ(ids, (QStringList{u"3"_s, u"1"_s, u"3"_s}));
}

TEST_F(Items, areMovedIntoTheDocumentTheyAreAppendedTo)
{
    QDomDocument document = tests::parse(u"<RawCheck/>"_s);
    document.documentElement().appendChild(
        client.getRequestItems({tests::goodsItem({})}, EDocumentType::Sale));
    EXPECT_EQ(document.documentElement().firstChildElement().firstChildElement().tagName(),
              u"RawItem"_s);
}

TEST_F(Items, insertReturnedPointsThroughTheHostsHelperAsAnAward)
{
    auto wrapper = QSharedPointer<NiceMock<tests::RecordingWrapper>>::create();
    client.xmlWrapper = wrapper;
    const QList<QString> path{u"returnedAwards"_s, u"RawItemReturnedAwards"_s,
                              u"usedBonusInCurrency"_s};
    EXPECT_CALL(*wrapper, insertElement(_, path, _, static_cast<XmlWrapper::Operation>(1)))
        .WillOnce([](QDomElement& parent, const QList<QString>&, const QDomNode& node,
                     XmlWrapper::Operation) {
            EXPECT_EQ(childTexts(parent), QStringList{u"returnedQuantity=1.000"_s});
            EXPECT_TRUE(node.isText());
            EXPECT_EQ(node.nodeValue(), u"12.50"_s);
        });
    returned({.bonusImpactSum = 12.5});
}
