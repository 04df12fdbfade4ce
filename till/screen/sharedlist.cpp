// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/sharedlist.h"

#include "till/screen/checklist.h"
#include "till/screen/table.h"
#include "till/screen/timetext.h"
#include "till/text.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace till {
namespace {

QString shownState(SharedRow::State state)
{
    switch (state) {
    case SharedRow::State::Suspended:
        return Text::tr("suspended");
    case SharedRow::State::Closed:
        return Text::tr("closed");
    case SharedRow::State::Delivered:
        return Text::tr("delivered");
    }
    return {};
}

QString nameOf(SharedRow::State state)
{
    switch (state) {
    case SharedRow::State::Suspended:
        return u"suspended"_s;
    case SharedRow::State::Closed:
        return u"closed"_s;
    case SharedRow::State::Delivered:
        return u"delivered"_s;
    }
    return {};
}

} // namespace

SharedList::SharedList(int width, Write into) : columns(width), write(std::move(into)) {}

void SharedList::add(const SharedRow& row)
{
    page.append(row);
    if (page.size() == checklist::pageLength) {
        flush();
    }
}

void SharedList::end()
{
    if (isFirst || !page.isEmpty()) {
        flush();
    }
}

void SharedList::flush()
{
    Table table({{Text::tr("Check"), Table::Align::Left, Table::Narrow::Above},
                 {Text::tr("No"), Table::Align::Right},
                 {Text::tr("Till")},
                 {Text::tr("Kind")},
                 {Text::tr("State")},
                 {Text::tr("Changed")}});
    table.setTitled(std::exchange(isFirst, false));
    for (const SharedRow& row : std::as_const(page)) {
        table.addRow({row.id, QString::number(row.number), row.till,
                      row.isReturn ? Text::tr("return") : Text::tr("sale"), shownState(row.state),
                      timetext::toTheSecond(row.at)});
    }
    page.clear();
    write(table.text(columns));
}

QJsonObject SharedList::object(const SharedRow& row)
{
    return {{u"id"_s, row.id},
            {u"number"_s, row.number},
            {u"till"_s, row.till},
            {u"kind"_s, row.isReturn ? u"return"_s : u"sale"_s},
            {u"state"_s, nameOf(row.state)},
            {u"changedAt"_s, row.at.toString(Qt::ISODate)}};
}

} // namespace till
