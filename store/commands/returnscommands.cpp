// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/commands/returnscommands.h"

#include "console/exitcode.h"
#include "console/printable.h"
#include "console/table.h"
#include "store/books/returnsbook.h"
#include "store/commands/spoken.h"
#include "store/database/connection.h"
#include "store/schema/storeschema.h"
#include "store/text.h"

using namespace Qt::StringLiterals;

namespace orvastore {

int ReturnsCommands::run()
{
    Connection connection(settings, {});
    storeschema::requireUsable(connection);
    if (options.command == Options::Command::ReturnsRelease) {
        release(connection);
    } else {
        list(connection);
    }
    return console::exitcode::ok;
}

void ReturnsCommands::list(Connection& connection)
{
    const Result found = connection.run(
        "SELECT identifier, shop, till, number, sale, (extract(epoch FROM at) * 1000)::bigint "
        "FROM orva.returns WHERE NOT is_closed AND NOT is_released ORDER BY at, identifier");
    if (found.rows() == 0) {
        out.line(Text::tr("No return has reserved anything."));
        return;
    }
    using Align = console::Table::Align;
    console::Table table({{Text::tr("Return")},
                          {Text::tr("Shop")},
                          {Text::tr("Till")},
                          {Text::tr("No"), Align::Right},
                          {Text::tr("Sale")},
                          {Text::tr("Since")}});
    for (int row = 0; row < found.rows(); ++row) {
        QStringList cells;
        for (int column = 0; column < 5; ++column) {
            cells.append(console::printable::line(found.text(row, column)));
        }
        cells.append(found.time(row, 5).toString(u"yyyy-MM-dd HH:mm:ss"_s));
        table.addRow(cells);
    }
    out.write(table.text(out.columns()));
}

void ReturnsCommands::release(Connection& connection)
{
    const Result found =
        connection.run("SELECT shop FROM orva.returns WHERE identifier = $1 AND NOT is_closed "
                       "AND NOT is_released",
                       {Value::text(options.identifier)});
    if (found.rows() == 0) {
        throw Failure(Text::tr("There is no return %1 that has reserved anything; look at "
                               "\"returns list\".")
                          .arg(options.identifier));
    }
    returnsbook::release(connection, found.text(0, 0), options.identifier);
    out.line(Text::tr("What the return %1 has reserved is free.").arg(options.identifier));
}

} // namespace orvastore
