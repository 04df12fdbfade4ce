// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/ledger.h"

#include "console/printable.h"
#include "host/database/database.h"
#include "host/database/statement.h"
#include "till/checks/amount.h"
#include "till/checks/checkstore.h"
#include "till/screen/checkview.h"
#include "till/screen/jsonlist.h"
#include "till/screen/table.h"
#include "till/screen/timetext.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// How many rows are written at once.
constexpr int rowsOfAPart = 500;

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

LedgerRow rowOf(const Check& check)
{
    return {check.id(),
            checkview::shortCard(check.cardNumber()),
            check.earnedKopecks(),
            check.spentKopecks(),
            check.givenBackKopecks(),
            check.takenBackKopecks()};
}

void addUp(LedgerRow& total, const LedgerRow& row)
{
    total.earned += row.earned;
    total.spent += row.spent;
    total.givenBack += row.givenBack;
    total.takenBack += row.takenBack;
}

/// @return false: it is there already
bool insert(poshost::Database& database, const QString& time, int number, const LedgerRow& row)
{
    poshost::Statement statement(
        database, u"INSERT OR IGNORE INTO temp.ledger VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s);
    statement.bind(time)
        .bind(number)
        .bind(row.check)
        .bind(row.card)
        .bind(row.earned)
        .bind(row.spent)
        .bind(row.givenBack)
        .bind(row.takenBack)
        .execute();
    return statement.affectedRows() == 1;
}

} // namespace

Ledger::Ledger(CheckStore& store, poshost::Database& opened)
    : Ledger([&store](const std::function<void(const Check&)>& take) { store.forEachClosed(take); },
             opened)
{}

Ledger::Ledger(const Source& source, poshost::Database& opened) : database(opened)
{
    database.execute(u"PRAGMA temp_store = FILE"_s); // SQLite's own, without a name
    database.execute(u"CREATE TEMP TABLE ledger (time TEXT, number INTEGER, id TEXT, card TEXT, "
                     "earned INTEGER, spent INTEGER, givenBack INTEGER, takenBack INTEGER, "
                     "PRIMARY KEY (time, number, id)) WITHOUT ROWID"_s);
    widest = fieldNames();
    widest.fill({});
    // reads only: whoever sells goes on, and what it closes from here on is not in the list
    database.execute(u"BEGIN"_s);
    try {
        read(source);
    } catch (const std::exception&) {
        database.execute(u"ROLLBACK"_s);
        letGo();
        throw;
    }
    database.execute(u"COMMIT"_s);
    total.check = Text::tr("Total");
}

void Ledger::read(const Source& source)
{
    source([&](const Check& check) {
        if (!check.confirmed) {
            return;
        }
        const LedgerRow row = rowOf(check);
        // a loyalty server's books, which they are compared with, know times to the second only
        if (!insert(database, timetext::toTheSecond(check.document->getDateTime()), check.number(),
                    row)) {
            return;
        }
        addUp(total, row);
        const QStringList cells = texts(row);
        for (qsizetype i = 0; i < cells.size(); ++i) {
            if (Table::widthOf(cells.at(i)) > Table::widthOf(widest.at(i))) {
                widest[i] = cells.at(i);
            }
        }
    });
}

Ledger::~Ledger()
{
    letGo();
}

void Ledger::letGo()
{
    try {
        database.execute(u"DROP TABLE temp.ledger"_s);
        database.execute(u"PRAGMA temp_store = MEMORY"_s);
    } catch (const std::exception&) { // goes with the connection
    }
}

void Ledger::forEach(Order order, const std::function<void(const LedgerRow&)>& take) const
{
    const QString columns = order == Order::AsMade ? u"time, number, id"_s : u"time, id"_s;
    poshost::Statement statement(
        database, u"SELECT id, card, earned, spent, givenBack, takenBack FROM temp.ledger "
                  "ORDER BY %1"_s.arg(columns));
    while (statement.next()) {
        take({statement.value(0).toString(), statement.value(1).toString(),
              statement.value(2).toLongLong(), statement.value(3).toLongLong(),
              statement.value(4).toLongLong(), statement.value(5).toLongLong()});
    }
}

void Ledger::writeTable(int width, const Write& write) const
{
    using Align = Table::Align;
    const auto newPart = [this] {
        Table part({{Text::tr("Check"), Align::Left, Table::Narrow::Above},
                    {Text::tr("Card")},
                    {Text::tr("Earned"), Align::Right},
                    {Text::tr("Spent"), Align::Right},
                    {Text::tr("Given back"), Align::Right},
                    {Text::tr("Taken back"), Align::Right}});
        part.addRoom(widest);
        part.addRoom(texts(total));
        return part;
    };
    Table part = newPart();
    int rows = 0;
    forEach(Order::AsMade, [&](const LedgerRow& row) {
        part.addRow(texts(row));
        if (++rows % rowsOfAPart == 0) {
            write(part.text(width));
            part = newPart();
            part.setTitled(false);
        }
    });
    part.addRow(texts(total));
    write(part.text(width));
}

void Ledger::writeCsv(const Write& write) const
{
    write(fieldNames().join(u',') + u'\n');
    forEach(Order::AsInTheBooks, [&write](const LedgerRow& row) {
        QStringList values = texts(row);
        for (QString& value : values) {
            value = console::printable::csv(value);
        }
        write(values.join(u',') + u'\n');
    });
}

void Ledger::writeJson(const Write& write) const
{
    const QStringList names = fieldNames();
    JsonList list(write);
    forEach(Order::AsMade, [&](const LedgerRow& row) {
        QJsonObject object;
        const QStringList values = texts(row);
        for (qsizetype i = 0; i < names.size(); ++i) {
            object.insert(names.at(i), values.at(i));
        }
        list.add(object);
    });
    list.end();
}

} // namespace till
