// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/ledgerprinter.h"

#include "console/printable.h"
#include "host/database/databasefailure.h"
#include "simulator/text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// Aligns rows of equal length: the first columns to the left, the others, which are amounts, to
/// the right.
QString table(std::vector<QStringList> rows, qsizetype leftColumns)
{
    for (QStringList& row : rows) {
        std::transform(row.cbegin(), row.cend(), row.begin(), console::printable::line);
    }
    std::vector<qsizetype> widths(static_cast<size_t>(rows.front().size()), 0);
    for (const QStringList& row : rows) {
        for (size_t i = 0; i < widths.size(); ++i) {
            widths[i] = std::max(widths[i], row[static_cast<qsizetype>(i)].size());
        }
    }
    QString out;
    for (const QStringList& row : rows) {
        QString line;
        for (qsizetype i = 0; i < row.size(); ++i) {
            const qsizetype width = widths[static_cast<size_t>(i)];
            line += i < leftColumns ? row[i].leftJustified(width) : row[i].rightJustified(width);
            line += u"  "_s;
        }
        while (line.endsWith(u' ')) {
            line.chop(1);
        }
        out += line + u'\n';
    }
    return out;
}

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

QString cardTable(const LedgerView& view)
{
    std::vector<QStringList> rows{{Text::tr("Card"), Text::tr("Owner"), Text::tr("Opening"),
                                   Text::tr("Earned"), Text::tr("Spent"), Text::tr("Given back"),
                                   Text::tr("Taken back"), Text::tr("Balance")}};
    for (const LedgerView::CardRow& row : view.cards) {
        const Account& account = row.account;
        rows.push_back({shortCard(account.card), row.owner, writeKopecks(account.opening),
                        writeKopecks(account.earned), writeKopecks(account.spent),
                        writeKopecks(account.givenBack), writeKopecks(account.takenBack),
                        writeKopecks(account.balance)});
    }
    return table(rows, 2);
}

QString checkTable(const LedgerView& view)
{
    std::vector<QStringList> rows{{Text::tr("Check"), Text::tr("Type"), Text::tr("Card"),
                                   Text::tr("Total"), Text::tr("Discount"), Text::tr("Paid"),
                                   Text::tr("Earned"), Text::tr("Spent"), Text::tr("Given back"),
                                   Text::tr("Taken back")}};
    for (const Booking& check : view.checks) {
        rows.push_back({check.checkId, typeText(check.type), shortCard(check.cardNumber),
                        writeKopecks(check.total), writeKopecks(check.discount),
                        writeKopecks(check.paid), writeKopecks(check.earned),
                        writeKopecks(check.spent), writeKopecks(check.givenBack),
                        writeKopecks(check.takenBack)});
    }
    return table(rows, 3);
}

QJsonObject cardObject(const LedgerView::CardRow& row)
{
    const Account& account = row.account;
    return {{u"number"_s, shortCard(account.card)},
            {u"owner"_s, row.owner},
            {u"opening"_s, account.opening},
            {u"earned"_s, account.earned},
            {u"spent"_s, account.spent},
            {u"givenBack"_s, account.givenBack},
            {u"takenBack"_s, account.takenBack},
            {u"balance"_s, account.balance}};
}

QJsonObject checkObject(const Booking& check)
{
    QJsonObject object{{u"id"_s, check.checkId},
                       {u"type"_s, typeName(check.type)},
                       {u"card"_s, shortCard(check.cardNumber)},
                       {u"number"_s, check.number},
                       {u"date"_s, check.date},
                       {u"total"_s, check.total},
                       {u"discount"_s, check.discount},
                       {u"paid"_s, check.paid},
                       {u"earned"_s, check.earned},
                       {u"spent"_s, check.spent},
                       {u"givenBack"_s, check.givenBack},
                       {u"takenBack"_s, check.takenBack}};
    if (check.type == Check::Type::Return) {
        object.insert(u"originalId"_s, check.originalId);
    }
    return object;
}

} // namespace

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
        return {readCards(database, rules), Ledger(database).bookings()};
    } catch (const poshost::DatabaseFailure& failure) {
        throw DatabaseError(failure);
    }
}

QString ledgerTables(const LedgerView& view)
{
    QString out = cardTable(view) + u'\n';
    out += view.checks.empty() ? Text::tr("No check is confirmed yet.\n") : checkTable(view);
    return out;
}

QString ledgerCsv(const LedgerView& view)
{
    QStringList lines;
    for (const Booking& check : view.checks) {
        lines.append(QStringList{console::printable::csv(check.checkId),
                                 shortCard(check.cardNumber), writeKopecks(check.earned),
                                 writeKopecks(check.spent), writeKopecks(check.givenBack),
                                 writeKopecks(check.takenBack)}
                         .join(u','));
    }
    lines.sort();
    lines.prepend(u"check,card,earned,spent,givenBack,takenBack"_s);
    return lines.join(u'\n') + u'\n';
}

QByteArray ledgerJson(const LedgerView& view)
{
    QJsonArray cards;
    for (const LedgerView::CardRow& row : view.cards) {
        cards.append(cardObject(row));
    }
    QJsonArray checks;
    for (const Booking& check : view.checks) {
        checks.append(checkObject(check));
    }
    return QJsonDocument(QJsonObject{{u"cards"_s, cards}, {u"checks"_s, checks}}).toJson();
}

} // namespace simulator
