// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// The server's element names, each spelled here and nowhere else in the client. Who looks at what
/// the client writes has a list of his own (protocol/names.h), so that a misspelt name is noticed.
namespace orva::element {

using namespace Qt::StringLiterals;

// the check
inline QString rawCheck()
{
    return u"RawCheck"_s;
}
inline QString id()
{
    return u"id"_s;
}
inline QString number()
{
    return u"number"_s;
}
inline QString pos()
{
    return u"pos"_s;
}
inline QString date()
{
    return u"date"_s;
}
inline QString originalId()
{
    return u"originalId"_s;
}
inline QString checkType()
{
    return u"chType"_s;
}
inline QString merchantId()
{
    return u"merchantId"_s;
}
inline QString total()
{
    return u"total"_s;
}
inline QString cardNumber()
{
    return u"cardNumber"_s;
}

// goods lines
inline QString items()
{
    return u"items"_s;
}
inline QString rawItem()
{
    return u"RawItem"_s;
}
inline QString quantity()
{
    return u"quantity"_s;
}
inline QString returnedQuantity()
{
    return u"returnedQuantity"_s;
}
inline QString returnedAwards()
{
    return u"returnedAwards"_s;
}
inline QString rawItemReturnedAwards()
{
    return u"RawItemReturnedAwards"_s;
}
inline QString sku()
{
    return u"sku"_s;
}
inline QString price()
{
    return u"price"_s;
}
inline QString minTotal()
{
    return u"minTotal"_s;
}
inline QString weight()
{
    return u"weight"_s;
}

// what a line used
inline QString usedAwards()
{
    return u"usedAwards"_s;
}
inline QString rawItemUsedAwards()
{
    return u"RawItemUsedAwards"_s;
}
inline QString usedDiscount()
{
    return u"usedDiscount"_s;
}
inline QString usedBonusInCurrency()
{
    return u"usedBonusInCurrency"_s;
}

// payments
inline QString payments()
{
    return u"payments"_s;
}
inline QString rawCheckPayment()
{
    return u"RawCheckPayment"_s;
}
inline QString amount()
{
    return u"amount"_s;
}
inline QString amountType()
{
    return u"atype"_s;
}

// the client
inline QString client()
{
    return u"client"_s;
}
inline QString rawCheckClient()
{
    return u"RawCheckClient"_s;
}
inline QString name()
{
    return u"name"_s;
}
inline QString surname()
{
    return u"surname"_s;
}
inline QString account()
{
    return u"account"_s;
}
inline QString rawCheckAccount()
{
    return u"RawCheckAccount"_s;
}
inline QString balance()
{
    return u"balance"_s;
}

// what the server grants
inline QString awards()
{
    return u"awards"_s;
}
inline QString rawCheckAwards()
{
    return u"RawCheckAwards"_s;
}
inline QString rawItemAwards()
{
    return u"RawItemAwards"_s;
}
inline QString allowBonus()
{
    return u"allowBonus"_s;
}
inline QString awardBonus()
{
    return u"awardBonus"_s;
}
inline QString discount()
{
    return u"discount"_s;
}
inline QString discountOnChange()
{
    return u"discountOnChange"_s;
}
inline QString allowBonusInCurrency()
{
    return u"allowBonusInCurrency"_s;
}

// messages
inline QString informing()
{
    return u"informing"_s;
}
inline QString rawCheckInforming()
{
    return u"RawCheckInforming"_s;
}
inline QString communicationChannel()
{
    return u"communicationChannel"_s;
}
inline QString info()
{
    return u"info"_s;
}

} // namespace orva::element
