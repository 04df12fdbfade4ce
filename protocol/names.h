// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// The server's element names that people ask about, each spelled here and nowhere else in
/// protocol/.
namespace protocol::names {

using namespace Qt::StringLiterals;

inline QString items()
{
    return u"items"_s;
}
inline QString rawItem()
{
    return u"RawItem"_s;
}
inline QString id()
{
    return u"id"_s;
}
inline QString awards()
{
    return u"awards"_s;
}
inline QString rawItemAwards()
{
    return u"RawItemAwards"_s;
}
inline QString discount()
{
    return u"discount"_s;
}
inline QString discountOnChange()
{
    return u"discountOnChange"_s;
}
inline QString awardBonus()
{
    return u"awardBonus"_s;
}
inline QString allowBonusInCurrency()
{
    return u"allowBonusInCurrency"_s;
}
inline QString rawCheckAwards()
{
    return u"RawCheckAwards"_s;
}
inline QString allowBonus()
{
    return u"allowBonus"_s;
}
inline QString client()
{
    return u"client"_s;
}
inline QString rawCheckClient()
{
    return u"RawCheckClient"_s;
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
inline QString returnedAwards()
{
    return u"returnedAwards"_s;
}
inline QString rawItemReturnedAwards()
{
    return u"RawItemReturnedAwards"_s;
}
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

} // namespace protocol::names
