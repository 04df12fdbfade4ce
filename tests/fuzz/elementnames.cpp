// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/fuzz/elementnames.h"

QStringList elementNames()
{
    return QStringLiteral(
               "RawCheck id number pos date chType merchantId total items RawItem quantity "
               "sku price minTotal weight awards RawItemAwards discount discountOnChange "
               "awardBonus allowBonusInCurrency usedAwards RawItemUsedAwards usedDiscount "
               "usedBonusInCurrency cardNumber client RawCheckClient name surname account "
               "RawCheckAccount balance RawCheckAwards allowBonus informing "
               "RawCheckInforming communicationChannel info payments RawCheckPayment "
               "amount type originalId")
        .split(u' ');
}
