// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "client/requestresult.h"
#include "host/document/discountimpact.h"
#include "tests/unit/client/fixtures.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using orva::RequestResult;

namespace {

QSharedPointer<DocumentImpact> discount(int position)
{
    auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setPosition(position);
    return QSharedPointer<DiscountImpact>::create(detail);
}

DocumentBonusRecord accrual(double amount)
{
    DocumentBonusRecord record;
    record.bonusAmount = amount;
    return record;
}

RequestResult filledResult()
{
    RequestResult result;
    result.discountImpacts = {discount(1), discount(2)};
    result.bonusRecords = {accrual(1.5), accrual(2.5)};
    result.posMessages = {u"первое"_s, u"второе"_s};
    result.checkMessages = {u"третье"_s, u"четвёртое"_s};
    return result;
}

} // namespace

TEST(RequestResult, startsWithFourEmptyLists)
{
    const RequestResult result;
    EXPECT_TRUE(result.discountImpacts.isEmpty());
    EXPECT_TRUE(result.bonusRecords.isEmpty());
    EXPECT_TRUE(result.posMessages.isEmpty());
    EXPECT_TRUE(result.checkMessages.isEmpty());
}

TEST(RequestResult, declaresItsMembersInTheOrderOfTheAnswer)
{
    const RequestResult result;
    const auto at = [&result](const auto& member) {
        return reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&result);
    };
    EXPECT_EQ(at(result.discountImpacts), 0);
    EXPECT_LT(at(result.discountImpacts), at(result.bonusRecords));
    EXPECT_LT(at(result.bonusRecords), at(result.posMessages));
    EXPECT_LT(at(result.posMessages), at(result.checkMessages));
}

TEST(RequestResult, twoDefaultOnesAreEqual)
{
    EXPECT_TRUE(RequestResult() == RequestResult());
}

TEST(RequestResult, copyIsEqualAndSharesItsLists)
{
    const RequestResult source = filledResult();
    const RequestResult copy = source; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_TRUE(copy == source);
    EXPECT_TRUE(copy.discountImpacts.isSharedWith(source.discountImpacts));
    EXPECT_TRUE(copy.bonusRecords.isSharedWith(source.bonusRecords));
    EXPECT_TRUE(copy.posMessages.isSharedWith(source.posMessages));
    EXPECT_TRUE(copy.checkMessages.isSharedWith(source.checkMessages));
}

TEST(RequestResult, distinctImpactsOfEqualContentMakeADifference)
{
    RequestResult left;
    left.discountImpacts = {discount(1)};
    RequestResult right;
    right.discountImpacts = {discount(1)};
    EXPECT_FALSE(left == right);
    right.discountImpacts = left.discountImpacts;
    EXPECT_TRUE(left == right);
}

TEST(RequestResult, distinctBonusRecordsOfEqualContentMakeNone)
{
    RequestResult left;
    left.bonusRecords = {accrual(1.5)};
    RequestResult right;
    right.bonusRecords = {accrual(1.5)};
    EXPECT_TRUE(left == right);
    right.bonusRecords = {accrual(1.25)};
    EXPECT_FALSE(left == right);
}

TEST(RequestResult, anyMemberThatDiffersMakesADifference)
{
    const RequestResult source = filledResult();
    RequestResult other = source;
    other.discountImpacts.removeLast();
    EXPECT_FALSE(source == other);
    other = source;
    other.bonusRecords.removeLast();
    EXPECT_FALSE(source == other);
    other = source;
    other.posMessages.removeLast();
    EXPECT_FALSE(source == other);
    other = source;
    other.checkMessages.removeLast();
    EXPECT_FALSE(source == other);
}

TEST(RequestResult, orderOfElementsMakesADifferenceInEveryMember)
{
    const RequestResult source = filledResult();
    RequestResult other = source;
    other.discountImpacts.swapItemsAt(0, 1);
    EXPECT_FALSE(source == other);
    other = source;
    other.bonusRecords.swapItemsAt(0, 1);
    EXPECT_FALSE(source == other);
    other = source;
    other.posMessages.swapItemsAt(0, 1);
    EXPECT_FALSE(source == other);
    other = source;
    other.checkMessages.swapItemsAt(0, 1);
    EXPECT_FALSE(source == other);
}

TEST(RequestResult, messagesAreComparedWithTheirCase)
{
    RequestResult left;
    left.posMessages = {u"Здравствуйте"_s};
    RequestResult right;
    right.posMessages = {u"здравствуйте"_s};
    EXPECT_FALSE(left == right);
    left.posMessages = right.posMessages;
    left.checkMessages = {u"Спасибо"_s};
    right.checkMessages = {u"СПАСИБО"_s};
    EXPECT_FALSE(left == right);
}
