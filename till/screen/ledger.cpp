// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/ledger.h"

#include "console/printable.h"
#include "till/checks/amount.h"
#include "till/checks/checkstore.h"
#include "till/screen/checkview.h"
#include "till/screen/table.h"
#include "till/screen/timetext.h"
#include "till/text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace till {
namespace {

QStringList fieldNames()
{
    return {u"check"_s, u"card"_s, u"earned"_s, u"spent"_s, u"givenBack"_s, u"takenBack"_s};
}

QStringList texts(const LedgerRow& row)
{
    return {row.check,
            row.card,
            amount::moneyText(row.earned),
            amount::moneyText(row.spent),
            amount::moneyText(row.givenBack),
            amount::moneyText(row.takenBack)};
}

} // namespace

Ledger::Ledger(CheckStore& store)
{
    store.forEachClosed([this](const Check& check) {
        if (check.confirmed) {
            checks.append({check.id(), timetext::toTheSecond(check.document->getDateTime()),
                           check.number(), checkview::shortCard(check.cardNumber()),
                           check.earnedKopecks(), check.spentKopecks(), check.givenBackKopecks(),
                           check.takenBackKopecks()});
        }
    });
    // of two checks of the same second the one that was made first
    std::sort(checks.begin(), checks.end(), [](const LedgerRow& left, const LedgerRow& right) {
        return std::tie(left.time, left.number, left.check) <
               std::tie(right.time, right.number, right.check);
    });
}

QString Ledger::table(int width) const
{
    using Align = Table::Align;
    Table table({{Text::tr("Check"), Align::Left, Table::Narrow::Above},
                 {Text::tr("Card")},
                 {Text::tr("Earned"), Align::Right},
                 {Text::tr("Spent"), Align::Right},
                 {Text::tr("Given back"), Align::Right},
                 {Text::tr("Taken back"), Align::Right}});
    LedgerRow total;
    total.check = Text::tr("Total");
    for (const LedgerRow& row : checks) {
        table.addRow(texts(row));
        total.earned += row.earned;
        total.spent += row.spent;
        total.givenBack += row.givenBack;
        total.takenBack += row.takenBack;
    }
    table.addRow(texts(total));
    return table.text(width);
}

QString Ledger::csv() const
{
    QString text = fieldNames().join(u',') + u'\n';
    // a loyalty server's books, with which these are compared line by line, have no number that
    // all tills agree upon
    QList<LedgerRow> rows = checks;
    std::sort(rows.begin(), rows.end(), [](const LedgerRow& left, const LedgerRow& right) {
        return std::tie(left.time, left.check) < std::tie(right.time, right.check);
    });
    for (const LedgerRow& row : std::as_const(rows)) {
        QStringList values = texts(row);
        for (QString& value : values) {
            value = console::printable::csv(value);
        }
        text += values.join(u',') + u'\n';
    }
    return text;
}

QString Ledger::json() const
{
    const QStringList names = fieldNames();
    QJsonArray array;
    for (const LedgerRow& row : checks) {
        QJsonObject object;
        const QStringList values = texts(row);
        for (qsizetype i = 0; i < names.size(); ++i) {
            object.insert(names.at(i), values.at(i));
        }
        array.append(object);
    }
    return QString::fromUtf8(QJsonDocument(array).toJson());
}

} // namespace till
