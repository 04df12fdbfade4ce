// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/checklist.h"

#include "till/checks/checkstore.h"
#include "till/screen/checkjson.h"
#include "till/screen/jsonlist.h"
#include "till/screen/table.h"
#include "till/screen/timetext.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// A check's state as people read it.
QString stateText(const QString& state)
{
    return state == u"open"_s        ? Text::tr("open")
           : state == u"suspended"_s ? Text::tr("suspended")
           : state == u"closed"_s    ? Text::tr("closed")
           : state == u"abandoned"_s ? Text::tr("abandoned")
           : state == u"left"_s      ? Text::tr("left in the store")
                                     : Text::tr("damaged");
}

Table emptyTable()
{
    return Table({{Text::tr("Check"), Table::Align::Left, Table::Narrow::Above},
                  {Text::tr("No"), Table::Align::Right},
                  {Text::tr("Kind")},
                  {Text::tr("State")},
                  {Text::tr("Changed")}});
}

/// One page of a long table, as wide as any other page.
Table furtherPage()
{
    Table page = emptyTable();
    page.setTitled(false);
    return page;
}

/// What no check of a long list is wider than, as long as nobody names checks by hand.
void addUsualRoom(Table& table)
{
    const QString number(7, u'0');
    const QString identifier(36, u'0');
    for (const QString& state : {u"open"_s, u"suspended"_s, u"closed"_s, u"abandoned"_s, u""_s}) {
        table.addRoom({identifier, number, Text::tr("return"), stateText(state)});
    }
}

void addTo(Table& table, const CheckRow& row)
{
    table.addRow({row.id, QString::number(row.number),
                  row.isReturn ? Text::tr("return") : Text::tr("sale"), stateText(row.state),
                  timetext::toTheSecond(row.updatedAt)});
}

/// Hands the checks over until there are enough.
void forEach(CheckStore& store, const checklist::Section& section,
             const std::function<void(const CheckRow&)>& take)
{
    int taken = 0;
    store.forEachListed(
        [&](const CheckRow& row) {
            take(row);
            return ++taken != section.most;
        },
        section.before);
}

} // namespace

void checklist::writeTable(CheckStore& store, const Section& section, int width, const Write& write)
{
    const bool isLong = section.most == 0 || section.most > pageLength;
    Table page = emptyTable();
    int rows = 0;
    const auto finish = [&] {
        if (isLong) {
            addUsualRoom(page);
        }
        write(page.text(width));
        page = furtherPage();
    };
    forEach(store, section, [&](const CheckRow& row) {
        addTo(page, row);
        if (++rows % pageLength == 0) {
            finish();
        }
    });
    if (rows == 0 || rows % pageLength != 0) {
        finish();
    }
}

void checklist::writeJson(CheckStore& store, const Section& section, const Write& write)
{
    JsonList list(write);
    forEach(store, section, [&list](const CheckRow& row) { list.add(checkjson::object(row)); });
    list.end();
}

} // namespace till
