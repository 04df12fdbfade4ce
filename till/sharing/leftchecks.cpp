// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/sharing/leftchecks.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/services/currenttime.h"
#include "till/checks/checkcodec.h"
#include "till/checks/checkstore.h"

using namespace Qt::StringLiterals;

namespace till {

void LeftChecks::begin(const Check& check, const QString& mark)
{
    poshost::Transaction transaction(database);
    store.suspend(check);
    store.abandon(check);
    poshost::Statement note(database,
                            u"INSERT OR REPLACE INTO leavings (check_id, number, mark, begun_at, "
                            "content) VALUES (?, ?, ?, ?, ?)"_s);
    note.bind(check.id())
        .bind(check.number())
        .bind(mark)
        .bind(CurrentTime::milliseconds())
        .bind(checkcodec::encode(check))
        .execute();
    transaction.commit();
}

bool LeftChecks::askAgain(const Leaving& leaving)
{
    poshost::Statement note(database, u"UPDATE leavings SET asked_again = 1 WHERE check_id = ? AND "
                                      "mark = ? AND content IS NOT NULL"_s);
    note.bind(leaving.id).bind(leaving.mark).execute();
    return note.affectedRows() == 1;
}

bool LeftChecks::askAgain(const TakeUpNote& note)
{
    poshost::Statement statement(database, u"UPDATE takeups SET asked_again = 1 WHERE token = ?"_s);
    statement.bind(note.token).execute();
    return statement.affectedRows() == 1;
}

bool LeftChecks::keepHere(const Leaving& leaving)
{
    poshost::Transaction transaction(database);
    poshost::Statement forget(database, u"DELETE FROM leavings WHERE check_id = ? AND mark = ? AND "
                                        "asked_again = 0 AND content IS NOT NULL"_s);
    forget.bind(leaving.id).bind(leaving.mark).execute();
    if (forget.affectedRows() != 1) {
        return false;
    }
    store.takeIn(checkcodec::decode(leaving.content, leaving.id));
    transaction.commit();
    return true;
}

void LeftChecks::finish(const Leaving& leaving)
{
    poshost::Transaction transaction(database);
    poshost::Statement note(database, u"UPDATE leavings SET content = NULL "
                                      "WHERE check_id = ? AND mark = ?"_s);
    note.bind(leaving.id).bind(leaving.mark).execute();
    // who leaves what it has taken up has nothing to tell the store about that any more
    poshost::Statement taken(database, u"DELETE FROM takeups WHERE check_id = ?"_s);
    taken.bind(leaving.id).execute();
    transaction.commit();
}

QList<Leaving> LeftChecks::unfinished()
{
    QList<Leaving> all;
    poshost::Statement statement(database,
                                 u"SELECT check_id, number, mark, begun_at, content FROM leavings "
                                 "WHERE content IS NOT NULL ORDER BY begun_at"_s);
    while (statement.next()) {
        all.append({statement.value(0).toString(), statement.value(1).toInt(),
                    statement.value(2).toString(),
                    QDateTime::fromMSecsSinceEpoch(statement.value(3).toLongLong()),
                    statement.value(4).toByteArray()});
    }
    return all;
}

void LeftChecks::noteTakeUp(const QString& token, const QString& which)
{
    poshost::Statement note(database, u"INSERT INTO takeups (token, which) VALUES (?, ?)"_s);
    note.bind(token).bind(which).execute();
}

void LeftChecks::takeIn(const QString& token, const Check& check)
{
    poshost::Transaction transaction(database);
    store.takeIn(check);
    poshost::Statement note(database, u"UPDATE takeups SET check_id = ? WHERE token = ?"_s);
    note.bind(check.id()).bind(token).execute();
    poshost::Statement back(database, u"DELETE FROM leavings WHERE check_id = ?"_s);
    back.bind(check.id()).execute();
    transaction.commit();
}

void LeftChecks::forgetUnasked(const QString& token)
{
    poshost::Statement statement(database,
                                 u"DELETE FROM takeups WHERE token = ? AND asked_again = 0"_s);
    statement.bind(token).execute();
}

void LeftChecks::forget(const QString& token)
{
    poshost::Statement statement(database, u"DELETE FROM takeups WHERE token = ?"_s);
    statement.bind(token).execute();
}

QList<TakeUpNote> LeftChecks::takeUps()
{
    QList<TakeUpNote> all;
    poshost::Statement statement(database,
                                 u"SELECT token, which, coalesce(check_id, '') FROM takeups"_s);
    while (statement.next()) {
        all.append({statement.value(0).toString(), statement.value(1).toString(),
                    statement.value(2).toString()});
    }
    return all;
}

} // namespace till
