// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/trial.h"

#include "host/database/databasefailure.h"
#include "simulator/documents/rejection.h"
#include "simulator/ledger/ledgerprinter.h"
#include "simulator/page/grantreasons.h"
#include "simulator/rules/granting.h"
#include "simulator/service.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr qsizetype mostLines = 200;

Kopecks amountIn(const QJsonObject& object, const QString& key, const QString& where)
{
    const QJsonValue value = object[key];
    const std::optional<Kopecks> amount =
        value.isUndefined() ? 0 : readKopecks(value.isString() ? value.toString() : u"-"_s);
    if (!amount || *amount < 0) {
        throw Rejection(400, u"%1%2 must be a text like \"12.50\""_s.arg(where, key));
    }
    return *amount;
}

Check checkIn(const QJsonObject& object)
{
    const QJsonArray lines = object[u"lines"_s].toArray();
    if (lines.isEmpty() || lines.size() > mostLines) {
        throw Rejection(400, u"lines must be a list of 1 to %1 lines"_s.arg(mostLines));
    }
    Check check;
    check.cardNumber = object[u"card"_s].toString();
    for (const auto& value : lines) {
        const QString where = u"lines[%1]."_s.arg(check.lines.size());
        const QJsonObject given = value.toObject();
        Line line;
        line.id = static_cast<int>(check.lines.size()) + 1;
        line.sku = given[u"sku"_s].toString();
        line.total = amountIn(given, u"total"_s, where);
        line.minTotal = amountIn(given, u"minTotal"_s, where);
        check.total = checkedSum(check.total, line.total);
        check.lines.push_back(line);
    }
    return check;
}

Kopecks balanceOf(const QString& database, const Rules& rules, const QString& number)
{
    try {
        Database books(database, Database::Open::ExistingOnly);
        for (const LedgerView::CardRow& row : readCards(books, rules)) {
            if (row.account.card == number && rules.card(number) != nullptr) {
                return row.account.balance;
            }
        }
    } catch (const poshost::DatabaseFailure& failure) {
        throw DatabaseError(failure);
    }
    throw Rejection(424, u"The rules know no such card"_s);
}

QJsonArray reasonList(const std::vector<GrantReason>& reasons)
{
    QJsonArray list;
    for (const GrantReason& reason : reasons) {
        list.append(QJsonObject{{u"what"_s, reason.what},
                                {u"rule"_s, reason.rule},
                                {u"base"_s, writeKopecks(reason.base)},
                                {u"exact"_s, reason.exact},
                                {u"granted"_s, writeKopecks(reason.granted)},
                                {u"limit"_s, reason.limit}});
    }
    return list;
}

Answer tried(const Service& service, const QString& database, const QByteArray& body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (!document.isObject()) {
        throw Rejection(400, u"The body must be a JSON object with card and lines"_s);
    }
    const QJsonObject asked = document.object();
    const Check check = checkIn(asked);
    const std::shared_ptr<const Rules> rules = service.rules();
    const Kopecks balance = balanceOf(database, *rules, check.cardNumber);
    const Grant grant = grantSale(*rules, check, balance);
    const Kopecks points = std::min(amountIn(asked, u"points"_s, {}), grant.allowBonus);
    QJsonArray lines;
    for (size_t i = 0; i < check.lines.size(); ++i) {
        lines.append(
            QJsonObject{{u"line"_s, check.lines[i].id},
                        {u"sku"_s, check.lines[i].sku},
                        {u"total"_s, writeKopecks(check.lines[i].total)},
                        {u"grants"_s, reasonList(grantReasons(*rules, check, grant, i, points))}});
    }
    const Kopecks discount = discountOf(grant);
    return jsonAnswer(
        QJsonDocument(QJsonObject{{u"balance"_s, writeKopecks(balance)},
                                  {u"total"_s, writeKopecks(check.total)},
                                  {u"discount"_s, writeKopecks(discount)},
                                  {u"mostPoints"_s, writeKopecks(grant.allowBonus)},
                                  {u"points"_s, writeKopecks(points)},
                                  {u"toPay"_s, writeKopecks(check.total - discount - points)},
                                  {u"earned"_s, writeKopecks(earnedWith(check, grant, points))},
                                  {u"lines"_s, lines}})
            .toJson(QJsonDocument::Compact));
}

} // namespace

std::vector<AdminRoute> trialRoutes(const Service& service, const QString& database)
{
    return {{"POST", "/try", [&service, database](const AdminCall& call) {
                 return tried(service, database, call.request.body);
             }}};
}

} // namespace simulator
