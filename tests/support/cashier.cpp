// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/cashier.h"

#include "host/database/database.h"
#include "till/checks/checkstore.h"

#include <QSharedPointer>

using namespace Qt::StringLiterals;

namespace tests {

CheckCount CheckCount::read(const QString& tillDatabase)
{
    CheckCount count;
    till::CheckStore store(QSharedPointer<poshost::Database>::create(tillDatabase));
    for (const till::CheckRow& row : store.list()) {
        count.closed += row.state == u"closed"_s ? 1 : 0;
        count.suspended += row.state == u"suspended"_s ? 1 : 0;
    }
    return count;
}

void Cashier::read(const QStringList& commands, const QString& output)
{
    qsizetype next = 0;
    const QStringList lines = output.split(u'\n');
    // the last piece is no line yet: nobody has seen it whole
    for (const QString& line : lines.first(lines.size() - 1)) {
        const bool refusal = line.startsWith(u"error: "_s);
        if ((line != u"ok"_s && !refusal) || next == commands.size()) {
            continue;
        }
        if (refusal) {
            refused.append(commands.at(next) + u" -> "_s + line);
        } else {
            acknowledge(commands.at(next));
        }
        ++next;
    }
    if (next < commands.size()) {
        unanswered(commands.at(next));
    }
}

/// Whether the command ends the life of a check that was suspended before.
bool Cashier::takesSuspended(const QString& command) const
{
    return restored && (command == u"close"_s || command == u"abandon"_s);
}

/// Here or in the store.
bool Cashier::suspends(const QString& command)
{
    return command.section(u' ', 0, 0) == u"suspend"_s;
}

void Cashier::acknowledge(const QString& command)
{
    ++acknowledged;
    closed += command == u"close"_s ? 1 : 0;
    suspended -= takesSuspended(command) ? 1 : 0;
    suspended += suspends(command) && !restored ? 1 : 0;
    if (command.startsWith(u"restore "_s)) {
        restored = true;
    } else if (command == u"close"_s || command == u"abandon"_s || suspends(command)) {
        restored = false;
    }
}

void Cashier::unanswered(const QString& command)
{
    perhapsClosed = command == u"close"_s ? 1 : 0;
    perhapsSuspended = takesSuspended(command) ? -1 : suspends(command) && !restored ? 1 : 0;
}

QString Cashier::complaint(const CheckCount& before, const CheckCount& after) const
{
    const int sureClosed = before.closed + closed;
    const int sureSuspended = before.suspended + suspended;
    // both happen in one step, or neither does
    const bool asAcknowledged = after.closed == sureClosed && after.suspended == sureSuspended;
    const bool oneFurther = after.closed == sureClosed + perhapsClosed &&
                            after.suspended == sureSuspended + perhapsSuspended;
    if (asAcknowledged || oneFurther) {
        return {};
    }
    return u"the cashier saw %1 checks closed and %2 suspended, the till holds %3 and %4"_s
        .arg(sureClosed)
        .arg(sureSuspended)
        .arg(after.closed)
        .arg(after.suspended);
}

} // namespace tests
