// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The closed checks of the store, found by what people call them.

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/services/currenttime.h"
#include "till/checks/archivedchecks.h"
#include "till/checks/checkcodec.h"
#include "till/checks/checkrow_p.h"
#include "till/checks/checkstore.h"
#include "till/failure.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

void requireOnlyOne(bool isOnlyOne, const QString& which, bool onlySales)
{
    if (!isOnlyOne) {
        throw Failure(
            (onlySales
                 ? Text::tr("Several sales have the number %1; name the sale by its identifier.")
                 : Text::tr("Several checks have the number %1; name the check by its identifier."))
                .arg(which),
            ExitCode::Usage);
    }
}

} // namespace

Check checkrow::read(const poshost::Statement& row)
{
    const QString id = row.value(1).toString();
    Check check = checkcodec::decode(row.value(0).toByteArray(), id);
    if (check.id() != id || check.number() != row.value(2).toLongLong() ||
        check.document->getDocumentType() != row.value(3).toLongLong() ||
        check.document->getSaleDocumentId() != row.value(4).toString()) {
        throw Failure(checkcodec::damagedText(id));
    }
    return check;
}

Check CheckStore::findSale(const QString& which)
{
    return find(which, true);
}

Check CheckStore::findClosed(const QString& which)
{
    return find(which, false);
}

bool CheckStore::hasClosed(const QString& which)
{
    bool isNumber = false;
    const int number = which.toInt(&isNumber);
    poshost::Statement statement(
        *database,
        u"SELECT 1 FROM checks WHERE +state = 'closed' AND (id = ? OR number = ?) LIMIT 1"_s);
    statement.bind(which).bind(isNumber ? QVariant(number) : QVariant());
    return statement.next() || !ArchivedChecks(*database).named(which, false).isEmpty();
}

Check CheckStore::findSaleToReturn(const QString& which)
{
    if (!terms.fromArchive && !findHere(which, true) && !ArchivedChecks(*database).isEmpty()) {
        throw Failure(Text::tr("There is no closed sale \"%1\" here; an older one is taken back "
                               "with \"return --archive\".")
                          .arg(which),
                      ExitCode::Usage);
    }
    Check sale = find(which, true);
    requireReturnable(sale);
    return sale;
}

std::optional<Check> CheckStore::findOwnSaleToReturn(const QString& which)
{
    if (!findHere(which, true) &&
        (!terms.fromArchive || ArchivedChecks(*database).named(which, true).isEmpty())) {
        return std::nullopt;
    }
    return findSaleToReturn(which);
}

void CheckStore::requireReturnable(const Check& sale) const
{
    const QDateTime sold = sale.document->getDateTime();
    const QDateTime now = MockFactory<CurrentTime>::create()->currentDateTime();
    if (terms.days && !terms.fromArchive && sold.daysTo(now) > *terms.days) {
        throw Failure(Text::tr("The sale was on %1, and goods are taken back for so many days: %2 "
                               "(returnDays of [till]); \"return --archive\" takes them back all "
                               "the same.")
                          .arg(sold.date().toString(Qt::ISODate))
                          .arg(*terms.days),
                      ExitCode::Usage);
    }
}

Check CheckStore::find(const QString& which, bool onlySales)
{
    if (std::optional<Check> here = findHere(which, onlySales)) {
        return *std::move(here);
    }
    const QList<Check> archived =
        which == u"last"_s ? QList<Check>() : ArchivedChecks(*database).named(which, onlySales);
    if (archived.isEmpty()) {
        throw Failure(
            (onlySales ? Text::tr("There is no closed sale \"%1\"; look at the list of checks.")
                       : Text::tr("There is no closed check \"%1\"; look at the list of checks."))
                .arg(which),
            ExitCode::Usage);
    }
    requireOnlyOne(archived.size() == 1, which, onlySales);
    return archived.first();
}

/// In the database.
std::optional<Check> CheckStore::findHere(const QString& which, bool onlySales)
{
    const bool last = which == u"last"_s;
    // the plus keeps the order's index out of it: only a few checks have the number
    QString condition =
        last ? u"state = 'closed'"_s : u"+state = 'closed' AND (id = ? OR number = ?)"_s;
    condition += onlySales ? u" AND type = ?"_s : QString();
    poshost::Statement statement(*database, checkrow::select + condition + checkrow::lastFirst +
                                                u" LIMIT 2"_s);
    if (!last) {
        bool isNumber = false;
        const int number = which.toInt(&isNumber);
        statement.bind(which).bind(isNumber ? QVariant(number) : QVariant());
    }
    if (onlySales) {
        statement.bind(static_cast<int>(EDocumentType::Sale));
    }
    if (!statement.next()) {
        return std::nullopt;
    }
    Check found = checkrow::read(statement);
    requireOnlyOne(last || !statement.next(), which, onlySales);
    return found;
}

QList<Check> CheckStore::returnsOf(const QString& saleId)
{
    QList<Check> returns;
    {
        poshost::Statement statement(*database,
                                     checkrow::select + u"sale_id = ? AND state = 'closed'"_s);
        statement.bind(saleId);
        while (statement.next()) {
            returns.append(checkrow::read(statement));
        }
    }
    if (!isHere(saleId)) { // no return goes into the archive before its sale
        const QList<Check> archived = ArchivedChecks(*database).returnsOf(saleId);
        archivedReturns.insert(saleId, int(archived.size()));
        returns = archived + returns;
    }
    return returns;
}

QString CheckStore::stateOf(const QString& id)
{
    poshost::Statement statement(*database, u"SELECT state FROM checks WHERE id = ?"_s);
    return statement.bind(id).next() ? statement.value(0).toString() : QString();
}

bool CheckStore::isHere(const QString& id)
{
    poshost::Statement statement(*database, u"SELECT 1 FROM checks WHERE id = ?"_s);
    return statement.bind(id).next();
}

/// Those of the archive are not counted anew: no sale waits while files are read. One that has gone
/// there meanwhile is missing in both counts, and the return is opened again.
int CheckStore::countReturns(const QString& saleId)
{
    poshost::Statement statement(
        *database, u"SELECT count(*) FROM checks WHERE sale_id = ? AND state = 'closed'"_s);
    statement.bind(saleId).next();
    return statement.value(0).toInt() + archivedReturns.value(saleId, 0);
}

std::optional<qint64> CheckStore::messageOf(const QString& id)
{
    poshost::Statement statement(*database, u"SELECT message_id FROM checks WHERE id = ?"_s);
    if (!statement.bind(id).next() || statement.value(0).isNull()) {
        return std::nullopt;
    }
    return statement.value(0).toLongLong();
}

bool CheckStore::isDelivered(const QString& id)
{
    // a delivered message is removed after some time, and the check's reference to it with it
    poshost::Statement statement(*database,
                                 u"SELECT 1 FROM checks JOIN queue_messages "
                                 "ON queue_messages.id = checks.message_id "
                                 "WHERE checks.id = ? AND queue_messages.state <> 'delivered'"_s);
    return !statement.bind(id).next();
}

QString CheckStore::cardOfMessage(qint64 messageId)
{
    poshost::Statement statement(*database, checkrow::select + u"message_id = ?"_s);
    return statement.bind(messageId).next() ? checkrow::read(statement).cardNumber() : QString();
}

} // namespace till
