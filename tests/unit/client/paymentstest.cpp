// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/recordingwrapper.h"
#include "tests/unit/client/steps.h"

using namespace Qt::StringLiterals;
using ::testing::InSequence;
using ::testing::StrictMock;

namespace {

QString paid(const QString& answer, const QList<double>& sums)
{
    const orva::Interface client;
    QDomDocument document = tests::parse(answer);
    QDomElement root = document.documentElement();
    for (const double sum : sums) {
        client.insertPayments(root, sum);
    }
    return tests::written(root);
}

QString payment(const QString& amount)
{
    return u"<payments><RawCheckPayment><amount>"_s + amount +
           u"</amount><atype>cash</atype></RawCheckPayment></payments>"_s;
}

} // namespace

TEST(Payments, areOneCashPaymentAsLastChildOfTheRoot)
{
    EXPECT_EQ(paid(u"<a><items/><client/></a>"_s, {345.5}),
              u"<a><items/><client/>"_s + payment(u"345.50"_s) + u"</a>"_s);
}

TEST(Payments, areWrittenWithTwoDecimalsAndNotValidated)
{
    const QList<QPair<double, QString>> table{{0, u"0.00"_s},
                                              {-12.5, u"-12.50"_s},
                                              {2.675, u"2.67"_s},
                                              {0.005, u"0.01"_s},
                                              {1234567.5, u"1234567.50"_s}};
    for (const auto& [sum, text] : table) {
        EXPECT_EQ(paid(u"<a/>"_s, {sum}), u"<a>"_s + payment(text) + u"</a>"_s);
    }
}

TEST(Payments, joinTheOnesThatAreThereWhenInsertedTwice)
{
    EXPECT_EQ(paid(u"<a/>"_s, {345.5, 1}),
              u"<a><payments><RawCheckPayment><amount>345.50</amount><atype>cash</atype>"
              "<amount>1.00</amount><atype>cash</atype></RawCheckPayment></payments></a>"_s);
}

TEST(Payments, areInsertedThroughTheHostsHelperAmountFirst)
{
    tests::OpenInterface client;
    auto wrapper = QSharedPointer<StrictMock<tests::RecordingWrapper>>::create();
    client.xmlWrapper = wrapper;
    const QList<QString> path{u"payments"_s, u"RawCheckPayment"_s};
    QDomDocument document = tests::parse(u"<a/>"_s);
    QDomElement root = document.documentElement();
    const auto holds = [](const QString& text) {
        return ::testing::Truly(
            [text](const QDomNode& node) { return tests::written(node) == text; });
    };
    const InSequence order;
    EXPECT_CALL(*wrapper,
                insertElement(::testing::Ref(root), path, holds(u"<amount>345.50</amount>"_s),
                              static_cast<XmlWrapper::Operation>(0)));
    EXPECT_CALL(*wrapper, insertElement(::testing::Ref(root), path, holds(u"<atype>cash</atype>"_s),
                                        static_cast<XmlWrapper::Operation>(0)));
    client.insertPayments(root, 345.5);
}
