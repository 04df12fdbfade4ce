// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/rules/granting.h"

#include "tests/unit/simulator/testchecks.h"

#include <algorithm>
#include <iostream>
#include <random>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

Rules percentages(int discount, Kopecks roundDownTo, int earn, int spend)
{
    Rules rules;
    rules.discount.general = discount;
    rules.roundDownTo = roundDownTo;
    rules.earn.general = earn;
    rules.spend.general = spend;
    return rules;
}

Check checkOf(const std::vector<Line>& lines)
{
    Check check;
    check.lines = lines;
    for (const Line& line : lines) {
        check.total += line.total;
    }
    return check;
}

TEST(Granting, roundsHalvesOfAKopeckUp)
{
    // 3.30 x 5 % = 0.165 -> 0.17; left 3.13: x 5 % = 0.1565 -> 0.16, x 50 % = 1.565 -> 1.57
    const Grant grant =
        grantSale(percentages(500, 0, 500, 5000), checkOf({{1, u"a"_s, 1000, 330, 0, 0}}), 10'000);
    EXPECT_EQ(grant.lines.at(0), (LineGrant{1, 17, 0, 16, 157}));
    EXPECT_EQ(grant.awardBonus, 16);
    EXPECT_EQ(grant.allowBonus, 157);
}

TEST(Granting, countsALineOfMoreKopecksThan32BitsHold)
{
    const Grant grant = grantSale(percentages(500, 0, 500, 5000),
                                  checkOf({{1, u"a"_s, 1000, 4'300'000'000, 0, 0}}), 5'000'000'000);
    EXPECT_EQ(grant.lines.at(0), (LineGrant{1, 215'000'000, 0, 204'250'000, 2'042'500'000}));
}

TEST(Granting, neverBringsALineBelowItsLeastTotal)
{
    const Check check = checkOf({{1, u"a"_s, 1000, 10'000, 9'800, 0},
                                 {2, u"a"_s, 1000, 10'000, 10'000, 0},
                                 {3, u"a"_s, 1000, 10'000, 20'000, 0}});
    const Grant grant = grantSale(percentages(1000, 0, 0, 0), check, 0);
    EXPECT_EQ(grant.lines.at(0).discount, 200);
    EXPECT_EQ(grant.lines.at(1).discount, 0);
    EXPECT_EQ(grant.lines.at(2).discount, 0);
}

TEST(Granting, usesThePercentageOfTheGoodsCode)
{
    Rules rules = percentages(500, 0, 500, 5000);
    rules.discount.bySku.insert(u"b"_s, 1000);
    rules.spend.bySku.insert(u"b"_s, 0);
    const Grant grant = grantSale(
        rules, checkOf({{1, u"a"_s, 1000, 1000, 0, 0}, {2, u"b"_s, 1000, 1000, 0, 0}}), 100'000);
    EXPECT_EQ(grant.lines.at(0), (LineGrant{1, 50, 0, 48, 475}));
    EXPECT_EQ(grant.lines.at(1), (LineGrant{2, 100, 0, 45, 0}));
}

TEST(Granting, roundsTheCheckDownOnTheDearestLineWithRoom)
{
    // 57.30 to pay: 0.30 off; the dearest line has no room, the next one has
    const Check check = checkOf({{1, u"a"_s, 1000, 1'000, 0, 0},
                                 {2, u"a"_s, 1000, 2'730, 2'701, 0},
                                 {3, u"a"_s, 1000, 2'000, 1'970, 0}});
    const Grant grant = grantSale(percentages(0, 100, 0, 0), check, 0);
    EXPECT_EQ(grant.lines.at(0).discountOnChange, 0);
    EXPECT_EQ(grant.lines.at(1).discountOnChange, 0);
    EXPECT_EQ(grant.lines.at(2).discountOnChange, 30);
}

TEST(Granting, roundsTheFirstOfEqualLines)
{
    const Grant grant =
        grantSale(percentages(0, 100, 0, 0),
                  checkOf({{7, u"a"_s, 1000, 1'050, 0, 0}, {8, u"a"_s, 1000, 1'050, 0, 0}}), 0);
    EXPECT_EQ(grant.lines.at(0).discountOnChange, 0 + 2'100 % 100);
    const Grant odd =
        grantSale(percentages(0, 500, 0, 0),
                  checkOf({{7, u"a"_s, 1000, 1'050, 0, 0}, {8, u"a"_s, 1000, 1'050, 0, 0}}), 0);
    EXPECT_EQ(odd.lines.at(0).discountOnChange, 100);
    EXPECT_EQ(odd.lines.at(1).discountOnChange, 0);
}

TEST(Granting, doesNotRoundWhereNoLineHasRoomOrNothingWouldBeLeft)
{
    const Rules rules = percentages(0, 100, 0, 0);
    EXPECT_EQ(
        grantSale(rules, checkOf({{1, u"a"_s, 1000, 130, 110, 0}}), 0).lines.at(0).discountOnChange,
        0);
    EXPECT_EQ(
        grantSale(rules, checkOf({{1, u"a"_s, 1000, 99, 0, 0}}), 0).lines.at(0).discountOnChange,
        0);
}

TEST(Granting, allowsNoMoreThanTheBalance)
{
    const Rules rules = percentages(0, 0, 0, 5000);
    const Check check = checkOf({{1, u"a"_s, 1000, 10'000, 0, 0}});
    EXPECT_EQ(grantSale(rules, check, 4'999).allowBonus, 4'999);
    EXPECT_EQ(grantSale(rules, check, 5'001).allowBonus, 5'000);
    EXPECT_EQ(grantSale(rules, check, -1).allowBonus, 0);
    EXPECT_EQ(grantSale(rules, check, -1).lines.at(0).allowBonus, 5'000);
}

TEST(Granting, ofAnEmptyCheckIsEmpty)
{
    const Grant grant = grantSale(percentages(500, 100, 500, 5000), {}, 100);
    EXPECT_TRUE(grant.lines.empty());
    EXPECT_EQ(grant.awardBonus, 0);
    EXPECT_EQ(grant.allowBonus, 0);
}

/// A second model of the rules, written from their description: percentages by quotient and
/// remainder, the line for the change by sorting.
class SecondModel
{
public:
    static Kopecks percent(Kopecks amount, int hundredths)
    {
        const Kopecks product = amount * hundredths;
        return product / 10'000 + (product % 10'000 >= 5'000 ? 1 : 0);
    }

    static std::vector<LineGrant> grant(const Rules& rules, const std::vector<Line>& lines)
    {
        std::vector<LineGrant> result;
        Kopecks sum = 0;
        for (const Line& line : lines) {
            Kopecks discount = percent(line.total, rules.discount.general);
            if (line.total - discount < line.minTotal) {
                discount = line.total > line.minTotal ? line.total - line.minTotal : 0;
            }
            result.push_back({line.id, discount, 0, 0, 0});
            sum += line.total - discount;
        }
        const Kopecks change = rules.roundDownTo == 0 ? 0 : sum % rules.roundDownTo;
        std::vector<size_t> order(lines.size());
        for (size_t i = 0; i < order.size(); ++i) {
            order[i] = i;
        }
        std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
            return lines[a].total - result[a].discount > lines[b].total - result[b].discount;
        });
        for (const size_t i : order) {
            if (sum > change && change > 0 &&
                lines[i].total - result[i].discount >= lines[i].minTotal + change) {
                result[i].discountOnChange = change;
                break;
            }
        }
        for (size_t i = 0; i < lines.size(); ++i) {
            const Kopecks rest = lines[i].total - result[i].discount - result[i].discountOnChange;
            result[i].awardBonus = percent(rest, rules.earn.general);
            result[i].allowBonus = percent(rest, rules.spend.general);
        }
        return result;
    }
};

TEST(Granting, agreesWithASecondModelOnRandomChecks)
{
    const unsigned seed =
        qEnvironmentVariableIntValue("ORVA_TEST_SEED") == 0
            ? 20240305U
            : static_cast<unsigned>(qEnvironmentVariableIntValue("ORVA_TEST_SEED"));
    std::cout << "seed " << seed << " (ORVA_TEST_SEED)\n";
    std::mt19937 random(seed);
    const auto upTo = [&random](int limit) {
        return static_cast<int>(random() % (unsigned(limit) + 1));
    };
    for (int run = 0; run < 100'000; ++run) {
        const std::vector<Kopecks> steps{0, 10, 50, 100, 500, 1000};
        const Rules rules =
            percentages(upTo(10'000), steps[random() % steps.size()], upTo(10'000), upTo(10'000));
        std::vector<Line> lines;
        for (int i = upTo(6); i > 0; --i) {
            const int total = upTo(upTo(1) == 0 ? 300 : 1'000'000);
            lines.push_back({i, u"a"_s, 1000, total, upTo(1) == 0 ? 0 : upTo(total + 100), 0});
        }
        const Check check = checkOf(lines);
        const Kopecks balance = upTo(2'000'000) - 1000;
        const Grant grant = grantSale(rules, check, balance);
        ASSERT_EQ(grant.lines, SecondModel::grant(rules, lines))
            << "seed " << seed << ", run " << run;
        Kopecks earn = 0;
        Kopecks allow = 0;
        for (size_t i = 0; i < lines.size(); ++i) {
            const LineGrant& line = grant.lines[i];
            const Kopecks rest = lines[i].total - line.discount - line.discountOnChange;
            ASSERT_TRUE(line.discount + line.discountOnChange == 0 || rest >= lines[i].minTotal);
            ASSERT_LE(line.allowBonus, rest);
            earn += line.awardBonus;
            allow += line.allowBonus;
        }
        ASSERT_EQ(grant.awardBonus, earn);
        ASSERT_EQ(grant.allowBonus, std::max<Kopecks>(0, std::min(allow, balance)));
    }
}

} // namespace
} // namespace simulator
