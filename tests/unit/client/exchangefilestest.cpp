// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "client/interface.h"
#include "host/document/document.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/fixtures.h"

using namespace Qt::StringLiterals;
using ::testing::NiceMock;
using ::testing::Return;
using tests::dataFile;
using tests::equalsFile;

namespace {

using ::testing::_;

/// Documents, and what goes out for them and comes back, compared with files byte for byte.
class ExchangeFiles : public ::testing::Test
{
protected:
    ExchangeFiles()
    {
        client.setUrl(u"http://loyalty.example/l/"_s);
        client.setCashData(u"1042"_s, u"3"_s);
        ON_CALL(transport, getHttpStatusCode()).WillByDefault(Return(200));
        ON_CALL(transport, getResponse()).WillByDefault(Return(dataFile(u"answer.xml"_s)));
        ON_CALL(transport, post(_, _, _))
            .WillByDefault(
                [this](const QUrl&, const QByteArray& body, const auto&) { sent = body; });
    }

    QSharedPointer<Document> sale() const
    {
        auto document = QSharedPointer<Document>::create();
        document->setDocumentId(u"7d0c2f6e-0001"_s);
        document->setCheckNumber(117);
        document->setDocumentType(EDocumentType::Sale);
        document->setDateTime(QDateTime(QDate(2024, 3, 5), QTime(14, 20, 31)));
        document->setGoodsItems({tests::goodsItem({.posnum = 1,
                                                   .code = u"1001"_s,
                                                   .quantity = 2,
                                                   .price = 49.9,
                                                   .sumb = 99.8,
                                                   .minPrice = 45}),
                                 tests::goodsItem({.posnum = 2,
                                                   .code = u"Сыр & масло"_s,
                                                   .quantity = 0.82,
                                                   .price = 300,
                                                   .sumb = 246,
                                                   .minPrice = 250.5,
                                                   .fractional = true})});
        return document;
    }

    QSharedPointer<Document> returnBySale() const
    {
        auto document = QSharedPointer<Document>::create();
        document->setDocumentId(u"7d0c2f6e-0002"_s);
        document->setCheckNumber(118);
        document->setDocumentType(EDocumentType::ReturnBySale);
        document->setSaleDocumentId(u"7d0c2f6e-0001"_s);
        document->setDateTime(QDateTime(QDate(2024, 3, 6), QTime(9, 5)));
        document->setGoodsItems({tests::goodsItem({.posnum = 1,
                                                   .code = u"1001"_s,
                                                   .quantity = 2,
                                                   .price = 49.9,
                                                   .sumb = 37.4,
                                                   .minPrice = 45,
                                                   .quantBack = 1.0,
                                                   .bonusImpactSum = 12.5}),
                                 tests::goodsItem({.posnum = 2,
                                                   .code = u"2002"_s,
                                                   .quantity = 0.82,
                                                   .price = 300,
                                                   .sumb = 246,
                                                   .minPrice = 250.5,
                                                   .fractional = true})});
        return document;
    }

    /// What the check used: discounts and points of this system, and another system's discount.
    void applyImpacts(Document& document) const
    {
        const auto other = tests::cardRecord(u"88"_s, 7);
        document.addImpact(tests::impact(EDiscountType::LoyaltyDiscount, 1, 15.5, record));
        document.addImpact(tests::impact(EDiscountType::LoyaltyDiscount, 1, 0.3, record));
        document.addImpact(tests::impact(EDiscountType::LoyaltyDiscount, 2, 4, record));
        document.addImpact(tests::impact(EDiscountType::LoyaltyDiscount, 1, 3.33, other));
        document.addImpact(tests::impact(EDiscountType::BonusPayment, 1, 20, record));
        document.addImpact(tests::impact(EDiscountType::BonusPayment, 2, 40, record));
    }

    QByteArray sent;
    QSharedPointer<DocumentCardRecord> record = tests::cardRecord(u"7700000000017"_s);
    NiceMock<tests::MockRestClient> transport;
    tests::Registered<RestClient> registration{transport};
    orva::Interface client;
};

} // namespace

TEST_F(ExchangeFiles, saleIsSentAsItsRequest)
{
    client.precheck(sale(), record);
    EXPECT_TRUE(equalsFile(sent, u"sale-request.xml"_s));
}

TEST_F(ExchangeFiles, returnIsSentAsItsRequest)
{
    client.precheck(returnBySale(), record);
    EXPECT_TRUE(equalsFile(sent, u"return-request.xml"_s));
}

TEST_F(ExchangeFiles, saleIsConfirmedWithTheAnswerAndWhatTheCheckUsed)
{
    const auto document = sale();
    client.precheck(document, record);
    applyImpacts(*document);
    document->setPaymentKopecks(26600);
    const auto message = client.getSaleRequest(document, record);
    EXPECT_TRUE(
        equalsFile(message.value(u"payload"_s).toString().toUtf8(), u"sale-confirmation.xml"_s));
}

TEST_F(ExchangeFiles, saleIsConfirmedFromARestoredAnswerWithTheSameText)
{
    const auto document = sale();
    client.precheck(document, record);
    orva::Interface restored;
    restored.setLastResponse(tests::parse(client.getLastResponse().toString()));
    applyImpacts(*document);
    document->setPaymentKopecks(26600);
    const auto message = restored.getSaleRequest(document, record);
    EXPECT_TRUE(
        equalsFile(message.value(u"payload"_s).toString().toUtf8(), u"sale-confirmation.xml"_s));
}

TEST_F(ExchangeFiles, returnIsConfirmedWithAFreshRequest)
{
    const auto message = client.getBackBySaleRequest(returnBySale(), record);
    EXPECT_TRUE(
        equalsFile(message.value(u"payload"_s).toString().toUtf8(), u"return-confirmation.xml"_s));
}

TEST_F(ExchangeFiles, missingFileIsAFailure)
{
    EXPECT_THROW(dataFile(u"no-such-file.xml"_s), std::invalid_argument);
}

TEST_F(ExchangeFiles, differenceIsAFailureThatShowsTheLines)
{
    QByteArray other = dataFile(u"sale-request.xml"_s);
    other.replace("<number>117</number>", "<number>118</number>");
    const ::testing::AssertionResult result = equalsFile(other, u"sale-request.xml"_s);
    EXPECT_FALSE(result);
    EXPECT_STREQ(result.message(), "sale-request.xml differs from line 3 on:\n"
                                   "- <number>117</number>\n+ <number>118</number>\n");
}
