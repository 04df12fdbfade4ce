// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/checkarchiving.h"

#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/services/currenttime.h"
#include "till/failure.h"
#include "till/text.h"

#include <QDateTime>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// So many are moved at once: the right to write is held for some milliseconds.
constexpr int checksOfAStep = 32;
/// So many are looked at in a row that may not go before what is behind them is left for later.
constexpr int longestLook = 1000;
constexpr int pagesOfAStep = 64;
constexpr qint64 millisecondsADay = 24LL * 3600 * 1000;

QString monthOf(qint64 milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString(u"yyyy-MM"_s);
}

} // namespace

struct CheckArchiving::Candidate
{
    qint64 change = 0;
    bool mayGo = false; ///< as far as its own row says
    ArchivedCheck check;
};

CheckArchiving::CheckArchiving(poshost::Database& opened, int days)
    : database(opened), archive(opened), lock(archive.lockFile()), keepDays(days)
{}

/// The next ones in the order of their changes, without their contents.
QList<CheckArchiving::Candidate> CheckArchiving::candidates()
{
    const qint64 limit = CurrentTime::milliseconds() - keepDays * millisecondsADay;
    poshost::Statement statement(
        database,
        u"SELECT c.change_number, c.id, c.number, c.state, c.type, c.sale_id, c.updated_at, "
        "c.state IN ('closed', 'abandoned') AND c.updated_at < ? AND "
        "(m.id IS NULL OR m.state = 'delivered') AND "
        "NOT EXISTS (SELECT 1 FROM silent_checks WHERE check_id = c.id) "
        "FROM checks c LEFT JOIN queue_messages m ON m.id = c.message_id "
        "WHERE c.change_number > ? ORDER BY c.change_number LIMIT ?"_s);
    statement.bind(limit).bind(behind).bind(longestLook);
    QList<Candidate> found;
    int ready = 0;
    while (ready < checksOfAStep && statement.next()) {
        Candidate candidate{statement.value(0).toLongLong(),
                            statement.value(7).toInt() != 0,
                            {statement.value(1).toString(),
                             statement.value(2).toLongLong(),
                             statement.value(3).toString(),
                             statement.value(4).toInt(),
                             statement.value(5).toString(),
                             statement.value(6).toLongLong(),
                             {}}};
        ready += candidate.mayGo ? 1 : 0;
        found.append(candidate);
    }
    return found;
}

/// A return stays as long as its sale: what is left to return is counted where the sale is.
bool CheckArchiving::isReady(const Candidate& candidate, const QList<Candidate>& chosen)
{
    const QString& sale = candidate.check.saleId;
    if (!candidate.mayGo || sale.isEmpty()) {
        return candidate.mayGo;
    }
    const bool goesToo = std::any_of(chosen.cbegin(), chosen.cend(), [&](const Candidate& other) {
        return other.check.id == sale;
    });
    poshost::Statement statement(database, u"SELECT 1 FROM checks WHERE id = ?"_s);
    return goesToo || !statement.bind(sale).next();
}

int CheckArchiving::step()
{
    if (!isMine()) {
        return 0;
    }
    const QList<Candidate> found = candidates();
    QList<Candidate> chosen;
    QString month;
    for (const Candidate& candidate : found) {
        const QString own = monthOf(candidate.check.updatedAt);
        if (isReady(candidate, chosen)) {
            if (!month.isEmpty() && own != month) {
                break; // begins the next step
            }
            month = own;
            chosen.append(candidate);
        }
        behind = candidate.change;
    }
    if (chosen.isEmpty()) {
        behind = 0;
        return 0;
    }
    for (Candidate& candidate : chosen) {
        poshost::Statement content(database, u"SELECT data FROM checks WHERE id = ?"_s);
        candidate.check.data =
            content.bind(candidate.check.id).next() ? content.value(0).toByteArray() : QByteArray();
    }
    move(chosen);
    return int(chosen.size());
}

void CheckArchiving::move(const QList<Candidate>& chosen)
{
    QList<ArchivedCheck> checks;
    for (const Candidate& candidate : chosen) {
        checks.append(candidate.check);
    }
    const CheckArchive::Month month = archive.write(monthOf(checks.first().updatedAt), checks);
    poshost::Transaction transaction(database);
    for (const Candidate& candidate : chosen) {
        poshost::Statement statement(database, u"DELETE FROM checks WHERE id = ? AND "
                                               "change_number = ? AND state = ?"_s);
        statement.bind(candidate.check.id).bind(candidate.change).bind(candidate.check.state);
        statement.execute();
        if (statement.affectedRows() != 1) {
            throw Failure(Text::tr("Check %1 was changed while it went into the archive; it stays.")
                              .arg(candidate.check.id));
        }
    }
    archive.countIn(month);
    transaction.commit();
}

bool CheckArchiving::giveBackPages()
{
    constexpr int incremental = 2;
    // each look has ended before the next one: whoever reads cannot wait for the right to write
    const auto valueOf = [this](const QString& sql) {
        poshost::Statement statement(database, sql);
        return statement.next() ? statement.value(0).toInt() : 0;
    };
    if (valueOf(u"PRAGMA freelist_count"_s) == 0 ||
        valueOf(u"PRAGMA auto_vacuum"_s) != incremental) {
        return false;
    }
    poshost::Statement give(database, u"PRAGMA incremental_vacuum(%1)"_s.arg(pagesOfAStep));
    while (give.next()) {
    } // a page a step
    return true;
}

} // namespace till
