// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/checkjson.h"

#include "till/checks/amount.h"
#include "till/checks/checkstore.h"
#include "till/checks/linefields.h"
#include "till/desk/cashdesk.h"
#include "till/screen/checkview.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace till {
namespace {

using amount::moneyText;

QString loyaltyName(LoyaltyState state)
{
    switch (state) {
    case LoyaltyState::NoCard:
        return u"noCard"_s;
    case LoyaltyState::Unasked:
        return u"unasked"_s;
    case LoyaltyState::Ready:
        return u"ready"_s;
    case LoyaltyState::Refused:
        return u"refused"_s;
    }
    return {};
}

QString kindName(bool isReturn)
{
    return isReturn ? u"return"_s : u"sale"_s;
}

QJsonValue valueOf(const LineField& field, const Line& line)
{
    switch (field.kind) {
    case LineField::Kind::Number:
        return field.valueIn<int>(line);
    case LineField::Kind::Text:
        return field.valueIn<QString>(line);
    case LineField::Kind::Unit:
        return linefields::unitName(field.valueIn<bool>(line));
    case LineField::Kind::Money:
    case LineField::Kind::Share:
        return moneyText(field.valueIn<qint64>(line));
    case LineField::Kind::Quantity:
        return amount::quantityText(field.valueIn<qint64>(line), line.fractional);
    }
    return {};
}

QJsonObject lineObject(const Line& line, bool isReturn)
{
    const LineField::Shown here =
        isReturn ? LineField::Shown::OnReturns : LineField::Shown::OnSales;
    QJsonObject object;
    for (const LineField& field : linefields::all()) {
        if (field.jsonUse == LineField::Shown::Always || field.jsonUse == here) {
            object.insert(field.name, valueOf(field, line));
        }
    }
    return object;
}

void insertSums(QJsonObject& object, const Check& check)
{
    object.insert(u"sum"_s, moneyText(check.goodsKopecks()));
    object.insert(u"discount"_s, moneyText(check.discountKopecks()));
    if (check.isReturn()) {
        object.insert(u"givenBack"_s, moneyText(check.givenBackKopecks()));
        object.insert(u"takenBack"_s, moneyText(check.takenBackKopecks()));
    } else {
        object.insert(u"spent"_s, moneyText(check.spentKopecks()));
        object.insert(u"earned"_s, moneyText(check.earnedKopecks()));
    }
    object.insert(u"money"_s, moneyText(check.moneyKopecks()));
    if (check.tenderedKopecks) {
        object.insert(u"tendered"_s, moneyText(*check.tenderedKopecks));
        object.insert(u"change"_s, moneyText(CashDesk::changeKopecks(check)));
    }
}

} // namespace

QJsonObject checkjson::object(const Check& check, const QStringList& notes)
{
    QJsonArray lines;
    for (const Line& line : check.lines) {
        lines.append(lineObject(line, check.isReturn()));
    }
    const QString card = check.cardNumber();
    QJsonObject result{{u"id"_s, check.id()},
                       {u"number"_s, check.number()},
                       {u"kind"_s, kindName(check.isReturn())},
                       {u"dateTime"_s, check.document->getDateTime().toString(Qt::ISODate)},
                       {u"card"_s, card.isEmpty() ? QString() : checkview::shortCard(card)},
                       {u"loyalty"_s, loyaltyName(check.loyalty)},
                       {u"refusal"_s, check.refusal},
                       {u"confirmed"_s, check.confirmed},
                       {u"lines"_s, lines},
                       {u"toCashier"_s, QJsonArray::fromStringList(check.cashierMessages)},
                       {u"toCustomer"_s, QJsonArray::fromStringList(check.clientMessages)},
                       {u"notes"_s, QJsonArray::fromStringList(notes)}};
    if (check.isReturn()) {
        result.insert(u"sale"_s, check.document->getSaleDocumentId());
    }
    insertSums(result, check);
    return result;
}

QJsonObject checkjson::object(const CheckRow& row)
{
    return {{u"id"_s, row.id},
            {u"number"_s, row.number},
            {u"kind"_s, kindName(row.isReturn)},
            {u"state"_s, row.state},
            {u"changedAt"_s, row.updatedAt.toString(Qt::ISODate)}};
}

} // namespace till
