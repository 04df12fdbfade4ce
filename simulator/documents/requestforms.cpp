// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/requestforms.h"

#include "simulator/documents/endpoints.h"
#include "simulator/documents/names.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

using Form = ElementForm;
using Order = ElementForm::Order;
constexpr auto maybe = ElementForm::Occurs::AtMostOnce;
constexpr auto any = ElementForm::Occurs::AnyTimes;

// the types of protocol/schema/types.xsd
const TextForm identifierText{wholeText(".{1,256}"_L1), "1 to 256 characters", true, false};
const TextForm anyText{wholeText(".*"_L1), "text", false, false};
const TextForm timeText{wholeText("[0-9]{4}-(0[1-9]|1[0-2])-(0[1-9]|[12][0-9]|3[01]) "
                                  "([01][0-9]|2[0-3]):[0-5][0-9]:[0-5][0-9]"_L1),
                        "a time such as 2024-03-05 14:20:31", false, false};
const TextForm channelText{wholeText("[a-z][a-zA-Z0-9_-]*"_L1), "a channel such as pos", false,
                           false};
const TextForm numberText{wholeText("0|[1-9][0-9]*"_L1), "a whole number from 0", true, true};
const TextForm lineIdText{wholeText("[1-9][0-9]*"_L1), "a whole number from 1", true, true};
const TextForm quantityText{wholeText("(?!0\\.000)(0|[1-9][0-9]{0,10})\\.[0-9]{3}"_L1),
                            "a quantity such as 1.000", true, false};
const TextForm amountText{wholeText("(0|[1-9][0-9]{0,11})\\.[0-9]{2}"_L1),
                          "an amount such as 12.50", true, false};
const TextForm priceText{wholeText("0|[1-9][0-9]{0,5}|[1-9][0-9]{0,4}\\.[0-9]{1,5}|0\\.[0-9]{1,10}|"
                                   "[1-9](\\.[0-9]{1,5})?e[+-][0-9]{2}"_L1),
                         "a price of at most six significant digits such as 49.9", true, false};
const TextForm grantedText{wholeText("(0|[1-9][0-9]{0,11})(\\.[0-9]{1,2})?"_L1),
                           "an amount of at most two decimals", true, false};
const TextForm signedText{wholeText("-?(0|[1-9][0-9]{0,11})(\\.[0-9]{1,2})?"_L1),
                          "an amount of at most two decimals", true, false};
const TextForm saleText{wholeText("1"_L1), "1 (sale)", true, false};
const TextForm returnText{wholeText("2"_L1), "2 (return)", true, false};
const TextForm unitText{wholeText("weight|piece"_L1), "weight or piece", true, false};
const TextForm cashText{wholeText("cash"_L1), "cash", true, false};

const Form identifier{&identifierText, {}};
const Form text{&anyText, {}};
const Form time{&timeText, {}};
const Form channel{&channelText, {}};
const Form number{&numberText, {}};
const Form lineId{&lineIdText, {}};
const Form quantity{&quantityText, {}};
const Form amount{&amountText, {}};
const Form price{&priceText, {}};
const Form granted{&grantedText, {}};
const Form signedGranted{&signedText, {}};
const Form saleType{&saleText, {}};
const Form returnType{&returnText, {}};
const Form unit{&unitText, {}};
const Form cash{&cashText, {}};

// what a till asks
const Form returnedPoints{nullptr, {{names::usedBonusInCurrency, &amount}}};
const Form returnedAwards{nullptr, {{names::rawItemReturnedAwards, &returnedPoints}}};
const Form soldLine{nullptr,
                    {{names::quantity, &quantity},
                     {names::id, &lineId},
                     {names::sku, &identifier},
                     {names::price, &price},
                     {names::total, &amount},
                     {names::minTotal, &amount},
                     {names::weight, &unit}}};
const Form returnedLine{nullptr,
                        {{names::returnedQuantity, &quantity},
                         {names::returnedAwards, &returnedAwards, maybe},
                         {names::id, &lineId},
                         {names::sku, &identifier},
                         {names::price, &price},
                         {names::total, &amount},
                         {names::minTotal, &amount},
                         {names::weight, &unit}}};
const Form soldLines{nullptr, {{names::rawItem, &soldLine, any}}};
const Form returnedLines{nullptr, {{names::rawItem, &returnedLine, any}}};
const Form saleRequest{nullptr,
                       {{names::id, &identifier},
                        {names::number, &number},
                        {names::pos, &text},
                        {names::date, &time},
                        {names::chType, &saleType},
                        {names::merchantId, &text},
                        {names::total, &amount},
                        {names::items, &soldLines},
                        {names::cardNumber, &identifier}}};
const Form returnRequest{nullptr,
                         {{names::id, &identifier},
                          {names::number, &number},
                          {names::pos, &text},
                          {names::date, &time},
                          {names::originalId, &identifier},
                          {names::chType, &returnType},
                          {names::merchantId, &text},
                          {names::total, &amount},
                          {names::items, &returnedLines},
                          {names::cardNumber, &identifier}}};

// what a confirmation carries back of the answer
const Form lineAwardsInner{nullptr,
                           {{names::discount, &granted, maybe},
                            {names::discountOnChange, &granted, maybe},
                            {names::awardBonus, &signedGranted, maybe},
                            {names::allowBonusInCurrency, &granted, maybe}},
                           Order::Free};
const Form lineAwards{nullptr, {{names::rawItemAwards, &lineAwardsInner}}};
const Form account{nullptr, {{names::balance, &signedGranted}}};
const Form accounts{nullptr, {{names::rawCheckAccount, &account}}};
const Form clientInner{
    nullptr,
    {{names::name, &text, maybe}, {names::surname, &text, maybe}, {names::account, &accounts}},
    Order::Free};
const Form client{nullptr, {{names::rawCheckClient, &clientInner}}};
const Form checkAwardsInner{
    nullptr,
    {{names::allowBonus, &granted, maybe}, {names::awardBonus, &signedGranted, maybe}},
    Order::Free};
const Form checkAwards{nullptr, {{names::rawCheckAwards, &checkAwardsInner}}};
const Form message{
    nullptr, {{names::communicationChannel, &channel}, {names::info, &text}}, Order::Free};
const Form informing{nullptr, {{names::rawCheckInforming, &message, any}}};

// what it adds
const Form usedAwardsInner{
    nullptr,
    {{names::usedDiscount, &amount, any}, {names::usedBonusInCurrency, &amount, any}},
    Order::Free,
    false};
const Form usedAwards{nullptr, {{names::rawItemUsedAwards, &usedAwardsInner}}};
const Form payment{nullptr, {{names::amount, &amount}, {names::amountType, &cash}}};
const Form payments{nullptr, {{names::rawCheckPayment, &payment}}};
const Form confirmedLine{nullptr,
                         {{names::quantity, &quantity, maybe},
                          {names::id, &lineId},
                          {names::sku, &identifier, maybe},
                          {names::price, &price, maybe},
                          {names::total, &amount, maybe},
                          {names::minTotal, &amount, maybe},
                          {names::weight, &unit, maybe},
                          {names::awards, &lineAwards, maybe},
                          {names::usedAwards, &usedAwards, maybe}},
                         Order::Free};
const Form confirmedLines{nullptr, {{names::rawItem, &confirmedLine, any}}};
const Form saleConfirmation{nullptr,
                            {{names::id, &identifier},
                             {names::number, &number, maybe},
                             {names::pos, &text, maybe},
                             {names::date, &time, maybe},
                             {names::chType, &saleType, maybe},
                             {names::merchantId, &text, maybe},
                             {names::total, &amount, maybe},
                             {names::items, &confirmedLines},
                             {names::cardNumber, &identifier, maybe},
                             {names::client, &client},
                             {names::awards, &checkAwards, maybe},
                             {names::informing, &informing, maybe},
                             {names::payments, &payments}},
                            Order::Free};

const Form& formOf(const Element& request, const QString& endpoint)
{
    // the confirmation of a return is the request once more
    const Element* type = request.child(names::chType);
    if ((type != nullptr && type->text.trimmed() == "2"_L1) ||
        request.child(names::originalId) != nullptr) {
        return returnRequest;
    }
    return endpoint == endpoints::precheck ? saleRequest : saleConfirmation;
}

} // namespace

std::optional<QString> requestObjection(const Element& request, const QString& endpoint)
{
    if (request.name != names::rawCheck) {
        return u"%1 is the root element: expected %2"_s.arg(request.name.left(40), names::rawCheck);
    }
    return formObjection(request, formOf(request, endpoint));
}

} // namespace simulator
