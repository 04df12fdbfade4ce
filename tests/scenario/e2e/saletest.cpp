// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// One sale as a newcomer tries it, then the wrong input.

#include "tests/support/shop.h"

using namespace Qt::StringLiterals;

namespace {

class SaleProgramTest : public Shop
{};

} // namespace

TEST_F(SaleProgramTest, CheckShowsOwnerBalanceDiscountsAccrualsPointsAndMessages)
{
    const RunResult shown = till({u"check"_s, u"sale.toml"_s});

    EXPECT_EQ(shown.exitCode, 0);
    for (const QString& part : {u"Анна"_s, u"500.00"_s, u"Чай чёрный"_s, u"0.765"_s}) {
        EXPECT_TRUE(shown.output.contains(part)) << qPrintable(part) << " is missing in:\n"
                                                 << qPrintable(shown.output);
    }
    EXPECT_EQ(undelivered(), 0);
    EXPECT_EQ(balance(), u"500.00"_s);
}

TEST_F(SaleProgramTest, SaleWithServerAwayGoesOnWithoutLoyaltyAndSaysWhy)
{
    stopServer();

    const RunResult sold = till({u"sell"_s, u"sale.toml"_s});

    EXPECT_EQ(sold.exitCode, 3) << qPrintable(sold.output);
    EXPECT_TRUE(sold.output.contains(u"Нет связи с сервером"_s)) << qPrintable(sold.output);
    EXPECT_EQ(undelivered(), 0);
    EXPECT_EQ(tillBooks(), u"check,card,earned,spent,givenBack,takenBack\n"_s);
}

TEST_F(SaleProgramTest, WrongPasswordIsSaidAndTheSaleGoesOn)
{
    writeConfig(u"not-the-password"_s);

    const RunResult sold = till({u"sell"_s, u"sale.toml"_s});

    EXPECT_EQ(sold.exitCode, 3) << qPrintable(sold.output);
    EXPECT_TRUE(sold.output.contains(u"Ошибка авторизации на сервере"_s))
        << qPrintable(sold.output);
    EXPECT_FALSE(sold.output.contains(u"not-the-password"_s));
    EXPECT_EQ(undelivered(), 0);
}

TEST_F(SaleProgramTest, ChangedPriceChangesTheCheck)
{
    writeFile(u"sale.toml"_s, readFile(u"sale.toml"_s).replace(u"149.90"_s, u"1149.90"_s));

    const RunResult shown = till({u"check"_s, u"sale.toml"_s});

    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_TRUE(shown.output.contains(u"2299.80"_s)) << qPrintable(shown.output);
}

TEST_F(SaleProgramTest, BrokenCheckFileIsRefusedWithFileAndLine)
{
    writeFile(u"sale.toml"_s, u"type = \"sale\"\ncard = \n"_s);

    const RunResult refused = till({u"check"_s, u"sale.toml"_s});

    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_TRUE(refused.output.contains(u"sale.toml, line 2: this is not TOML ("_s))
        << qPrintable(refused.output);
}

TEST_F(SaleProgramTest, WrongTypeInConfigurationIsRefusedWithKey)
{
    writeFile(u"orva.toml"_s,
              readFile(u"orva.toml"_s).replace(u"timeout = 5"_s, u"timeout = \"5\""_s));

    const RunResult refused = till({u"check"_s, u"sale.toml"_s});

    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_TRUE(refused.output.contains(u"Orva.timeout"_s)) << qPrintable(refused.output);
    EXPECT_TRUE(refused.output.contains(u"orva.toml"_s)) << qPrintable(refused.output);
}
