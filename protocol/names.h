// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QLatin1StringView>

/// The element names of the documents on the wire, each spelled here for all who read them beside
/// the plug-in: the simulator and those who explain a case. The client has a list of its own
/// (client/elements.h), since it is judged with this one: a misspelt name would agree with itself.
namespace protocol::names {

using Name = QLatin1StringView;

// the check and what identifies it
inline constexpr Name rawCheck{"RawCheck"};
inline constexpr Name id{"id"};
inline constexpr Name number{"number"};
inline constexpr Name pos{"pos"};
inline constexpr Name date{"date"};
inline constexpr Name originalId{"originalId"};
inline constexpr Name chType{"chType"};
inline constexpr Name merchantId{"merchantId"};
inline constexpr Name total{"total"};
inline constexpr Name cardNumber{"cardNumber"};

// goods lines
inline constexpr Name items{"items"};
inline constexpr Name rawItem{"RawItem"};
inline constexpr Name quantity{"quantity"};
inline constexpr Name returnedQuantity{"returnedQuantity"};
inline constexpr Name returnedAwards{"returnedAwards"};
inline constexpr Name rawItemReturnedAwards{"RawItemReturnedAwards"};
inline constexpr Name sku{"sku"};
inline constexpr Name price{"price"};
inline constexpr Name minTotal{"minTotal"};
inline constexpr Name weight{"weight"};

// what an answer grants
inline constexpr Name awards{"awards"};
inline constexpr Name rawItemAwards{"RawItemAwards"};
inline constexpr Name discount{"discount"};
inline constexpr Name discountOnChange{"discountOnChange"};
inline constexpr Name awardBonus{"awardBonus"};
inline constexpr Name allowBonusInCurrency{"allowBonusInCurrency"};
inline constexpr Name rawCheckAwards{"RawCheckAwards"};
inline constexpr Name allowBonus{"allowBonus"};
inline constexpr Name client{"client"};
inline constexpr Name rawCheckClient{"RawCheckClient"};
inline constexpr Name name{"name"};
inline constexpr Name surname{"surname"};
inline constexpr Name account{"account"};
inline constexpr Name rawCheckAccount{"RawCheckAccount"};
inline constexpr Name balance{"balance"};
inline constexpr Name informing{"informing"};
inline constexpr Name rawCheckInforming{"RawCheckInforming"};
inline constexpr Name communicationChannel{"communicationChannel"};
inline constexpr Name info{"info"};

// what a confirmation says was used and paid
inline constexpr Name usedAwards{"usedAwards"};
inline constexpr Name rawItemUsedAwards{"RawItemUsedAwards"};
inline constexpr Name usedDiscount{"usedDiscount"};
inline constexpr Name usedBonusInCurrency{"usedBonusInCurrency"};
inline constexpr Name payments{"payments"};
inline constexpr Name rawCheckPayment{"RawCheckPayment"};
inline constexpr Name amount{"amount"};
inline constexpr Name amountType{"atype"};

} // namespace protocol::names
