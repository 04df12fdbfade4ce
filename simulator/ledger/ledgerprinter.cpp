// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/ledgerprinter.h"

#include "console/printable.h"
#include "console/table.h"
#include "host/database/databasefailure.h"
#include "simulator/text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

using console::Table;
using Align = Table::Align;

/// As the till writes it in its own ledger, with which this one is compared line by line: the
/// simulator knows nothing of the till.
QString shortCard(const QString& number)
{
    return u"****"_s + number.right(4);
}

QString typeName(Check::Type type)
{
    return type == Check::Type::Sale ? u"sale"_s : u"return"_s;
}

/// The type as people read it.
QString typeText(Check::Type type)
{
    return type == Check::Type::Sale ? Text::tr("sale") : Text::tr("return");
}

QString cardTable(const LedgerView& view, int width)
{
    Table table({{Text::tr("Card")},
                 {Text::tr("Owner")},
                 {Text::tr("Opening"), Align::Right},
                 {Text::tr("Earned"), Align::Right},
                 {Text::tr("Spent"), Align::Right},
                 {Text::tr("Given back"), Align::Right},
                 {Text::tr("Taken back"), Align::Right},
                 {Text::tr("Balance"), Align::Right}});
    for (const LedgerView::CardRow& row : view.cards) {
        const Account& account = row.account;
        table.addRow({shortCard(account.card), row.owner, writeKopecks(account.opening),
                      writeKopecks(account.earned), writeKopecks(account.spent),
                      writeKopecks(account.givenBack), writeKopecks(account.takenBack),
                      writeKopecks(account.balance)});
    }
    return table.text(width);
}

QString checkTable(const LedgerView& view, int width)
{
    Table table({{Text::tr("Check"), Align::Left, Table::Narrow::Above},
                 {Text::tr("Type"), Align::Left, Table::Narrow::Above},
                 {Text::tr("Card")},
                 {Text::tr("Total"), Align::Right},
                 {Text::tr("Discount"), Align::Right},
                 {Text::tr("Paid"), Align::Right},
                 {Text::tr("Earned"), Align::Right},
                 {Text::tr("Spent"), Align::Right},
                 {Text::tr("Given back"), Align::Right},
                 {Text::tr("Taken back"), Align::Right}});
    for (const Booking& check : view.checks) {
        table.addRow({check.checkId, typeText(check.type), shortCard(check.cardNumber),
                      writeKopecks(check.total), writeKopecks(check.discount),
                      writeKopecks(check.paid), writeKopecks(check.earned),
                      writeKopecks(check.spent), writeKopecks(check.givenBack),
                      writeKopecks(check.takenBack)});
    }
    return table.text(width);
}

} // namespace

QJsonObject cardJson(const LedgerView::CardRow& row)
{
    const Account& account = row.account;
    return {{u"number"_s, account.card},
            {u"owner"_s, row.owner},
            {u"opening"_s, writeKopecks(account.opening)},
            {u"earned"_s, writeKopecks(account.earned)},
            {u"spent"_s, writeKopecks(account.spent)},
            {u"givenBack"_s, writeKopecks(account.givenBack)},
            {u"takenBack"_s, writeKopecks(account.takenBack)},
            {u"balance"_s, writeKopecks(account.balance)}};
}

QJsonObject checkJson(const Booking& check)
{
    QJsonObject object{{u"id"_s, check.checkId},
                       {u"type"_s, typeName(check.type)},
                       {u"card"_s, check.cardNumber},
                       {u"number"_s, check.number},
                       {u"date"_s, check.date},
                       {u"total"_s, writeKopecks(check.total)},
                       {u"discount"_s, writeKopecks(check.discount)},
                       {u"paid"_s, writeKopecks(check.paid)},
                       {u"earned"_s, writeKopecks(check.earned)},
                       {u"spent"_s, writeKopecks(check.spent)},
                       {u"givenBack"_s, writeKopecks(check.givenBack)},
                       {u"takenBack"_s, writeKopecks(check.takenBack)}};
    if (check.type == Check::Type::Return) {
        object.insert(u"originalId"_s, check.originalId);
    }
    return object;
}

QString LedgerView::wrongCard() const
{
    for (const CardRow& row : cards) {
        if (row.account.balance != row.account.expected()) {
            return shortCard(row.account.card);
        }
    }
    return {};
}

std::vector<LedgerView::CardRow> readCards(Database& database, const Rules& rules)
{
    std::vector<LedgerView::CardRow> cards;
    for (const Account& account : Ledger(database).accounts()) {
        const Card* card = rules.card(account.card);
        cards.push_back(
            {account, card == nullptr ? QString() : (card->name + u' ' + card->surname).trimmed()});
    }
    for (const Card& card : rules.cards) {
        const bool seen =
            std::any_of(cards.begin(), cards.end(), [&](const LedgerView::CardRow& row) {
                return row.account.card == card.number;
            });
        if (!seen) {
            cards.push_back({{card.number, card.opening, 0, 0, 0, 0, card.opening},
                             (card.name + u' ' + card.surname).trimmed()});
        }
    }
    std::sort(cards.begin(), cards.end(),
              [](const auto& a, const auto& b) { return a.account.card < b.account.card; });
    return cards;
}

LedgerView readLedger(Database& database, const Rules& rules)
{
    try {
        // one transaction, so that cards and checks are of the same moment
        const Transaction transaction(database);
        LedgerView view{readCards(database, rules), Ledger(database).bookings()};
        // of two checks of the same second the one that was booked first
        std::stable_sort(view.checks.begin(), view.checks.end(),
                         [](const Booking& a, const Booking& b) { return a.date < b.date; });
        return view;
    } catch (const poshost::DatabaseFailure& failure) {
        throw DatabaseError(failure);
    }
}

QString ledgerTables(const LedgerView& view, int width)
{
    QString out = cardTable(view, width) + u'\n';
    out += view.checks.empty() ? Text::tr("No check is confirmed yet.\n") : checkTable(view, width);
    return out;
}

QString ledgerCsv(const LedgerView& view)
{
    std::vector<Booking> checks = view.checks;
    std::sort(checks.begin(), checks.end(), [](const Booking& left, const Booking& right) {
        return std::tie(left.date, left.checkId) < std::tie(right.date, right.checkId);
    });
    QStringList lines;
    for (const Booking& check : checks) {
        lines.append(QStringList{console::printable::csv(check.checkId),
                                 shortCard(check.cardNumber), writeKopecks(check.earned),
                                 writeKopecks(check.spent), writeKopecks(check.givenBack),
                                 writeKopecks(check.takenBack)}
                         .join(u','));
    }
    lines.prepend(u"check,card,earned,spent,givenBack,takenBack"_s);
    return lines.join(u'\n') + u'\n';
}

QByteArray ledgerJson(const LedgerView& view)
{
    QJsonArray cards;
    for (const LedgerView::CardRow& row : view.cards) {
        QJsonObject card = cardJson(row);
        card.insert(u"number"_s, shortCard(row.account.card));
        cards.append(card);
    }
    QJsonArray checks;
    for (const Booking& booking : view.checks) {
        QJsonObject check = checkJson(booking);
        check.insert(u"card"_s, shortCard(booking.cardNumber));
        checks.append(check);
    }
    return QJsonDocument(QJsonObject{{u"cards"_s, cards}, {u"checks"_s, checks}}).toJson();
}

} // namespace simulator
