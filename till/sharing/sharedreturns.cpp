// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/sharing/sharedreturns.h"

#include "till/checks/checkcodec.h"
#include "till/checks/checkstore.h"
#include "till/checks/closedchecks.h"
#include "till/checks/returnlines.h"
#include "till/failure.h"
#include "till/reason.h"
#include "till/text.h"

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using orvastore::KeptCheck;
using orvastore::SaleToReturn;
using orvastore::StoreEnd;
using orvastore::StoreResult;

namespace till {
namespace {

/// The check of another till: what comes from the store is looked at here and nowhere else.
/// @throws Failure when it is damaged, or is not the check that the store says it is
Check checkOf(const KeptCheck& kept)
{
    Check check = checkcodec::decode(kept.content, kept.identifier);
    if (check.id() != kept.identifier || check.number() != kept.number ||
        check.document->getSaleDocumentId() != kept.saleIdentifier) {
        throw Failure(checkcodec::damagedText(kept.identifier));
    }
    return check;
}

[[noreturn]] void refuseSeveral(const QString& which, const QList<KeptCheck>& sales)
{
    QStringList names;
    for (const KeptCheck& sale : sales) {
        names.append(Text::tr("%1 (till %2)").arg(sale.identifier, sale.till));
    }
    throw Failure(Text::tr("Several tills have a sale with the number %1; name one by its "
                           "identifier: %2.")
                      .arg(which, names.join(u", "_s)),
                  ExitCode::Usage);
}

bool hasAmountsOf(const Line& line, const Line& other)
{
    return line.position == other.position &&
           line.returnedThousandths == other.returnedThousandths &&
           line.sumKopecks == other.sumKopecks && line.discountKopecks == other.discountKopecks &&
           line.givenBackKopecks == other.givenBackKopecks &&
           line.takenBackKopecks == other.takenBackKopecks;
}

} // namespace

void SharedReturns::begin()
{
    isForeign = false;
    asks = false;
    isNoted = false;
    isRepeated = false;
    isDelivered.reset();
    known.clear();
    notices.clear();
}

/// What this till's own abandoned returns still hold is given back first.
SaleToReturn SharedReturns::ask(const QString& which)
{
    SaleToReturn answer;
    const QDeadlineTimer end(store.timeout());
    try {
        orvastore::SharedBooks& books = store.books();
        books.allow(store.timeout());
        if (Reservations::nextDue(database).value_or(1) == 0) {
            answer.result = Reservations::releaseDue(database, books, store.shop());
        }
        answer = books.saleToReturn(store.shop(), which);
    } catch (const Failure& failure) {
        answer.result = {StoreEnd::Unreachable, poshost::Message::plain(failure.text())};
    }
    left = std::chrono::milliseconds(end.remainingTime());
    return answer;
}

SaleOfShop SharedReturns::find(const QString& which)
{
    begin();
    const std::optional<Check> own = checks.findOwnSaleToReturn(which);
    if (!own && which == u"last"_s) {
        return withOthers(checks.findSaleToReturn(which), {}); // says that there is none
    }
    const SaleToReturn answer = ask(own ? own->id() : which);
    const bool isAnswered = answer.result.end == StoreEnd::Done;
    if (!isAnswered && !own) {
        throw Failure(Text::tr("This till has no closed sale \"%1\", and the store cannot be asked "
                               "for those of other tills (%2); try again, or return it where it "
                               "was sold.")
                          .arg(which, said(answer.result.error)));
    }
    if (!isAnswered) {
        notices.append(Text::tr("The store cannot be asked what other tills took back of the sale "
                                "(%1); the return goes on with what this till knows.")
                           .arg(said(answer.result.error)));
        return withOthers(*own, {});
    }
    if (answer.sales.size() > 1) {
        refuseSeveral(which, answer.sales);
    }
    asks = true;
    if (!answer.sales.isEmpty()) {
        isDelivered = answer.sales.first().isDelivered;
    }
    if (own || answer.sales.isEmpty()) {
        return withOthers(own ? *own : checks.findSaleToReturn(which), answer.returns);
    }
    isForeign = true;
    const Check sale = checkOf(answer.sales.first());
    checks.requireReturnable(sale);
    return withOthers(sale, answer.returns);
}

/// The till's own returns are the file's, whatever the store says of them.
SaleOfShop SharedReturns::withOthers(const Check& sale, const QList<KeptCheck>& others)
{
    SaleOfShop found{sale, checks.returnsOf(sale.id()), 0};
    found.ownReturns = int(found.earlier.size());
    for (const Check& check : std::as_const(found.earlier)) {
        known.append(check.id());
    }
    for (const KeptCheck& kept : others) {
        if (!known.contains(kept.identifier)) {
            found.earlier.append(checkOf(kept));
            known.append(kept.identifier);
        }
    }
    return found;
}

void SharedReturns::resume(const Check& suspended)
{
    const QString saleId = suspended.document->getSaleDocumentId();
    SaleOfShop found = find(saleId);
    // its own reservation, of a closing that did not succeed
    found.earlier.removeIf([&](const Check& check) { return check.id() == suspended.id(); });
    known.removeAll(suspended.id());
    const QList<Line> lines = returnlines::of(found.sale, found.earlier, suspended.lines);
    if (!std::equal(lines.cbegin(), lines.cend(), suspended.lines.cbegin(), suspended.lines.cend(),
                    hasAmountsOf)) {
        throw Failure(Text::tr("Another return of this sale has been closed meanwhile; abandon "
                               "this one and open it again."));
    }
}

void SharedReturns::reserve(const Check& closing)
{
    if (!asks) {
        return; // of a sale of its own, with the store away
    }
    notes.note(closing.id());
    isNoted = true;
    const StoreResult result = reserveInStore(closing);
    if (result.end == StoreEnd::Done) {
        return;
    }
    if (result.isConflict) {
        throw Failure(said(result.error));
    }
    if (isForeign) {
        throw Failure(Text::tr("The check is not closed: the store has not confirmed the return of "
                               "another till's sale (%1); close it again, or abandon it.")
                          .arg(said(result.error)));
    }
    asks = false;
    notices.append(Text::tr("The store has not confirmed the return (%1); it is looked at again "
                            "when the check is handed over.")
                       .arg(said(result.error)));
}

/// Another return that is about to close at its till is waited for.
StoreResult SharedReturns::reserveInStore(const Check& closing)
{
    constexpr auto betweenLooks = std::chrono::milliseconds(50);
    orvastore::SharedBooks& books = store.books();
    if (std::exchange(isRepeated, true)) {
        left = store.timeout();
        books.allow(left);
    }
    const QDeadlineTimer end(left);
    StoreResult result = askToReserve(books, closing);
    while (result.error.code() == QLatin1String(orvastore::undecidedReturn) &&
           end.remainingTimeAsDuration() > betweenLooks) {
        QThread::msleep(betweenLooks.count());
        books.allow(std::chrono::milliseconds(end.remainingTime()));
        result = askToReserve(books, closing);
    }
    return result;
}

StoreResult SharedReturns::askToReserve(orvastore::SharedBooks& books, const Check& closing) const
{
    return books.reserve({store.shop(), store.till(), closing.id(), closing.number(),
                          closing.document->getSaleDocumentId(), returnedLinesOf(closing), known,
                          checkcodec::encode(closing)});
}

void SharedReturns::use(const Check& closing)
{
    if (isNoted) {
        notes.use(closing.id());
    }
}

QStringList SharedReturns::takeNotices()
{
    return std::exchange(notices, {});
}

} // namespace till
