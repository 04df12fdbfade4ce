// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/samples.h"
#include "contract/subject.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

void contract::addLinePromises() {}

namespace contract {
namespace {

/// The line as it comes back out of a document.
QSharedPointer<GoodsItem> throughADocument(const QSharedPointer<GoodsItem>& line)
{
    DocumentData data;
    data.goodsItems = {line};
    const auto lines = subject().makeDocument(data)->getGoodsItems();
    EXPECT_EQ(lines.size(), 1);
    return lines.value(0);
}

TEST(GoodsLineContract, AnswersWhatItWasMadeOf)
{
    const auto given = goodsLine(4, 68.77);
    given->setCode(u"1002"_s);
    given->setQuantity(0.765);
    given->setPrice(89.90);
    given->setMinPrice(70.00);
    given->setBonusImpactSum(1.25);
    const auto line = throughADocument(given);
    ASSERT_FALSE(line.isNull());
    EXPECT_EQ(line->getPosnum(), 4);
    EXPECT_EQ(line->getCode(), u"1002"_s);
    EXPECT_DOUBLE_EQ(line->getQuantity(), 0.765);
    EXPECT_DOUBLE_EQ(line->getPrice(), 89.90);
    EXPECT_DOUBLE_EQ(line->getSumb(), 68.77);
    EXPECT_DOUBLE_EQ(line->getMinPrice(), 70.00);
    EXPECT_DOUBLE_EQ(line->getBonusImpactSum(), 1.25);
}

TEST(GoodsLineContract, TheReturnedQuantityIsNullUntilItIsSet)
{
    const auto line = throughADocument(goodsLine(1, 10));
    ASSERT_FALSE(line.isNull());
    EXPECT_TRUE(line->getQuantBack().isNull());
    line->setQuantBack(0.5);
    EXPECT_DOUBLE_EQ(line->getQuantBack().toDouble(), 0.5);
}

TEST(GoodsLineContract, AlwaysHasAUnit)
{
    GoodsItem fresh;
    ASSERT_NE(fresh.getTmcUnit(), nullptr);
    EXPECT_FALSE(fresh.getTmcUnit()->isFractional()) << "pieces unless said otherwise";
    const auto given = goodsLine(1, 10);
    given->setTmcUnit(TmcUnit(u"кг"_s, true));
    const auto line = throughADocument(given);
    ASSERT_FALSE(line.isNull());
    ASSERT_NE(line->getTmcUnit(), nullptr);
    EXPECT_TRUE(line->getTmcUnit()->isFractional());
}

} // namespace
} // namespace contract
