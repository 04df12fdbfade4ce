// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "input/exactquotient.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using input::dividedProduct;
using input::Division;

namespace {

constexpr quint64 largest = std::numeric_limits<quint64>::max();

/// Whether a * b = quotient * divisor + rest, told without a number of 128 bits: both sides leave
/// the same rest when they are divided by 2^64 and by three primes, whose product is beyond 2^128.
bool isExact(quint64 a, quint64 b, quint64 divisor, const Division& found)
{
    bool same = a * b == found.quotient * divisor + found.rest && found.rest < divisor;
    for (const quint64 prime : {2147483647ULL, 2147483629ULL, 2147483587ULL}) {
        const quint64 expected = (a % prime) * (b % prime) % prime;
        const quint64 product = (found.quotient % prime) * (divisor % prime) % prime;
        same = same && expected == (product + found.rest % prime) % prime;
    }
    return same;
}

} // namespace

TEST(ExactQuotient, DividesWhatFits)
{
    const auto found = dividedProduct(7, 3, 4);
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->quotient, 5U);
    EXPECT_EQ(found->rest, 1U);
}

TEST(ExactQuotient, KeepsTheProductInFull)
{
    const auto found = dividedProduct(largest, largest - 1, largest);
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->quotient, largest - 1);
    EXPECT_EQ(found->rest, 0U);
}

TEST(ExactQuotient, SaysWhenTheQuotientDoesNotFit)
{
    EXPECT_TRUE(dividedProduct(1ULL << 63U, 1, 1).has_value());
    EXPECT_FALSE(dividedProduct(1ULL << 63U, 2, 1).has_value());
    EXPECT_FALSE(dividedProduct(largest, largest, largest - 1).has_value());
}

TEST(ExactQuotient, IsExactForNumbersOfEverySize)
{
    std::mt19937_64 random(20261122);
    const auto number = [&] { return random() >> (random() % 64); };
    int fitting = 0;
    int wide = 0;
    for (int i = 0; i < 200'000; ++i) {
        const quint64 a = number();
        const quint64 b = number();
        const quint64 divisor = number() | 1U;
        const auto found = dividedProduct(a, b, divisor);
        if (found.has_value()) {
            ++fitting;
            wide += a != 0 && a * b / a != b ? 1 : 0;
            ASSERT_TRUE(isExact(a, b, divisor, *found)) << a << " x " << b << " / " << divisor;
        }
    }
    EXPECT_GT(fitting, 100'000);
    EXPECT_GT(wide, 10'000);
}
