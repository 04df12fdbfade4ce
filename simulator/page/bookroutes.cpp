// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/bookroutes.h"

#include "host/database/databasefailure.h"
#include "simulator/documents/rejection.h"
#include "simulator/ledger/ledgerpages.h"
#include "simulator/ledger/ledgerprinter.h"
#include "simulator/page/bookedreasons.h"
#include "simulator/service.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr qint64 usualChecks = 50;
constexpr qint64 mostChecks = 1000;
constexpr qint64 longestCourse = 500;

QJsonObject lineObject(const BookedLine& line)
{
    return {{u"line"_s, line.id},
            {u"sku"_s, line.sku},
            {u"thousandths"_s, line.quantity},
            {u"total"_s, writeKopecks(line.total)},
            {u"discount"_s, writeKopecks(line.discount)},
            {u"spent"_s, writeKopecks(line.spent)},
            {u"earned"_s, writeKopecks(line.earned)},
            {u"givenBack"_s, writeKopecks(line.givenBack)},
            {u"takenBack"_s, writeKopecks(line.takenBack)}};
}

QJsonObject wholeCheck(const Booking& check)
{
    QJsonObject object = checkJson(check);
    object.insert(u"originalId"_s, check.originalId);
    if (!check.lines.empty()) {
        QJsonArray lines;
        for (const BookedLine& line : check.lines) {
            lines.append(lineObject(line));
        }
        object.insert(u"lines"_s, lines);
    }
    return object;
}

Answer objectAnswer(const QJsonObject& object)
{
    return jsonAnswer(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

/// All cards, their sums, and the first card and check that do not add up.
Answer cardsAnswer(Database& database, const Rules& rules)
{
    const Transaction transaction(database);
    const LedgerView view{readCards(database, rules), {}};
    const LedgerPages pages(database);
    LedgerView::CardRow sums;
    QJsonArray cards;
    for (const LedgerView::CardRow& row : view.cards) {
        cards.append(cardJson(row));
        sums.account.opening = checkedSum(sums.account.opening, row.account.opening);
        sums.account.earned = checkedSum(sums.account.earned, row.account.earned);
        sums.account.spent = checkedSum(sums.account.spent, row.account.spent);
        sums.account.givenBack = checkedSum(sums.account.givenBack, row.account.givenBack);
        sums.account.takenBack = checkedSum(sums.account.takenBack, row.account.takenBack);
        sums.account.balance = checkedSum(sums.account.balance, row.account.balance);
    }
    const QString wrongCard = view.wrongCard();
    const QString wrongCheck = pages.wrongCheck();
    return objectAnswer({{u"cards"_s, cards},
                         {u"sums"_s, cardJson(sums)},
                         {u"checks"_s, pages.count()},
                         {u"agree"_s, wrongCard.isEmpty() && wrongCheck.isEmpty()},
                         {u"wrongCard"_s, wrongCard},
                         {u"wrongCheck"_s, wrongCheck}});
}

Answer cardAnswer(Database& database, const Rules& rules, const QString& number)
{
    const Transaction transaction(database);
    const std::vector<LedgerView::CardRow> cards = readCards(database, rules);
    const auto found = std::find_if(cards.begin(), cards.end(),
                                    [&](const auto& row) { return row.account.card == number; });
    if (found == cards.end()) {
        throw Rejection(404, u"There is no such card: GET /cards lists them"_s);
    }
    QJsonArray course;
    for (const LedgerPages::Point& point :
         LedgerPages(database).course(number, found->account.balance, longestCourse)) {
        course.append(QJsonObject{{u"check"_s, point.checkId},
                                  {u"date"_s, point.date},
                                  {u"balance"_s, writeKopecks(point.balance)}});
    }
    QJsonObject card = cardJson(*found);
    card.insert(u"course"_s, course);
    return objectAnswer(card);
}

Answer checksAnswer(Database& database, const AdminCall& call)
{
    const qint64 before = call.number(u"before"_s, std::numeric_limits<qint64>::max());
    const qint64 most = std::min(call.number(u"most"_s, usualChecks), mostChecks);
    QJsonArray checks;
    qint64 next = 0;
    for (const LedgerPages::Row& row : LedgerPages(database).newest(before, most)) {
        checks.append(wholeCheck(row.booking));
        next = row.sequence;
    }
    return objectAnswer({{u"checks"_s, checks}, {u"next"_s, checks.size() < most ? 0 : next}});
}

/// By which rules the amounts of a check and of its lines would come about now.
QJsonArray reasonList(const std::vector<BookedReason>& reasons)
{
    QJsonArray list;
    for (const BookedReason& reason : reasons) {
        list.append(QJsonObject{{u"line"_s, reason.line},
                                {u"what"_s, reason.what},
                                {u"rule"_s, reason.rule},
                                {u"amount"_s, writeKopecks(reason.amount)},
                                {u"fits"_s, reason.fits}});
    }
    return list;
}

/// The returns of a sale, each with its lines and their reasons.
QJsonArray returnList(const Booking& sale, const std::vector<Booking>& returns)
{
    QJsonArray list;
    for (size_t i = 0; i < returns.size(); ++i) {
        QJsonObject object = wholeCheck(returns[i]);
        object.insert(u"reasons"_s, reasonList(returnReasons(sale, returns, i)));
        list.append(object);
    }
    return list;
}

/// The reasons of a return that is asked for by itself.
std::vector<BookedReason> reasonsOfReturn(const LedgerPages& pages, const Booking& check)
{
    const std::optional<Booking> sale = pages.check(check.originalId);
    const std::vector<Booking> returns = pages.returnsOf(check.originalId);
    const auto at = std::find_if(returns.begin(), returns.end(), [&](const Booking& booking) {
        return booking.checkId == check.checkId;
    });
    if (!sale || at == returns.end()) {
        return {}; // books that were changed from outside
    }
    return returnReasons(*sale, returns, static_cast<size_t>(at - returns.begin()));
}

/// A check with its lines and, of a sale, its returns.
Answer checkAnswer(Database& database, const Rules& rules, const QString& id)
{
    const Transaction transaction(database);
    const LedgerPages pages(database);
    const std::optional<Booking> check = pages.check(id);
    if (!check) {
        throw Rejection(404, u"No such check is confirmed: GET /checks lists them"_s);
    }
    QJsonObject object = wholeCheck(*check);
    object.insert(u"returns"_s, returnList(*check, pages.returnsOf(id)));
    object.insert(u"reasons"_s,
                  reasonList(check->type == Check::Type::Sale ? saleReasons(rules, *check)
                                                              : reasonsOfReturn(pages, *check)));
    return objectAnswer(object);
}

} // namespace

std::vector<AdminRoute> bookRoutes(const Service& service, const QString& database)
{
    const auto read = [database](const auto& look) {
        try {
            Database books(database, Database::Open::ExistingOnly);
            return look(books);
        } catch (const poshost::DatabaseFailure& failure) {
            throw DatabaseError(failure);
        }
    };
    return {{"GET", "/cards",
             [&service, read](const AdminCall&) {
                 return read([&](Database& books) { return cardsAnswer(books, *service.rules()); });
             }},
            {"GET", "/cards/{number}",
             [&service, read](const AdminCall& call) {
                 return read([&](Database& books) {
                     return cardAnswer(books, *service.rules(), call.part);
                 });
             }},
            {"GET", "/checks",
             [read](const AdminCall& call) {
                 return read([&](Database& books) { return checksAnswer(books, call); });
             }},
            {"GET", "/checks/{id}", [&service, read](const AdminCall& call) {
                 return read([&](Database& books) {
                     return checkAnswer(books, *service.rules(), call.part);
                 });
             }}};
}

} // namespace simulator
