// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/commands/suspendedcommands.h"

#include "console/exitcode.h"
#include "console/table.h"
#include "store/commands/spoken.h"
#include "store/database/connection.h"
#include "store/schema/storeschema.h"
#include "store/text.h"

using namespace Qt::StringLiterals;

namespace orvastore {

namespace {

/// As many as fit on a few screens.
constexpr int listedAtMost = 500;

void list(Connection& connection, console::Output& out)
{
    const Result rows = connection.run(
        "SELECT shop, identifier, number, till, floor(extract(epoch FROM left_at) * 1000)::bigint, "
        "coalesce(taken_by, '') FROM orva.suspended WHERE settled_at IS NULL "
        "ORDER BY at LIMIT $1::int",
        {Value::number(listedAtMost)});
    if (rows.rows() == 0) {
        out.line(Text::tr("No suspended check is left here."));
        return;
    }
    console::Table table(
        {{Text::tr("Check"), console::Table::Align::Left, console::Table::Narrow::Above},
         {Text::tr("Shop")},
         {Text::tr("No"), console::Table::Align::Right},
         {Text::tr("Left by")},
         {Text::tr("Left at")},
         {Text::tr("Asked for by")}});
    for (int i = 0; i < rows.rows(); ++i) {
        table.addRow({rows.text(i, 1), rows.text(i, 0), rows.text(i, 2), rows.text(i, 3),
                      rows.time(i, 4).toString(u"yyyy-MM-dd HH:mm:ss"_s), rows.text(i, 5)});
    }
    out.write(table.text(out.columns()));
    if (rows.rows() == listedAtMost) {
        out.line(Text::tr("These are the oldest; there may be more."));
    }
}

} // namespace

int SuspendedCommands::run()
{
    Connection connection(settings, {});
    storeschema::requireUsable(connection);
    if (options.command == Options::Command::SuspendedList) {
        list(connection, out);
        return console::exitcode::ok;
    }
    const Result done =
        connection.run("SELECT orva.release_suspended($1)", {Value::text(options.check)});
    if (!done.isTrue(0, 0)) {
        throw Failure(Text::tr("No till has asked for the suspended check %1 without getting it; "
                               "look at \"suspended list\".")
                          .arg(options.check));
    }
    out.line(Text::tr("Any till of the shop may take up check %1.").arg(options.check));
    return console::exitcode::ok;
}

} // namespace orvastore
