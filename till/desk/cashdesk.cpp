// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/cashdesk.h"

#include "host/loyalty/basicloyaltysystem.h"
#include "host/services/session.h"
#include "till/checks/amount.h"
#include "till/checks/cardnumber.h"
#include "till/checks/checkstore.h"
#include "till/checks/returnlines.h"
#include "till/checks/storing.h"
#include "till/desk/impactapplier.h"
#include "till/failure.h"
#include "till/reason.h"
#include "till/sharing/sharedreturns.h"
#include "till/sharing/suspendedsharing.h"
#include "till/text.h"

#include <algorithm>

namespace till {
CashDesk::CashDesk(BasicLoyaltySystem& loyaltySystem, CheckStore& checkStore,
                   Session& cashierSession)
    : loyalty(loyaltySystem), store(checkStore), session(cashierSession)
{}

CashDesk::~CashDesk()
{
    try {
        leave();
    } catch (const std::exception&) {
        layDown(); // the check stays in the list as open; nothing of it was confirmed
    }
}

void CashDesk::openSale(const CheckFile& file)
{
    requireNone();
    Check opened = storing([&] {
        const int number = file.number ? *file.number : store.takeNumber();
        Check noted = Check::create(EDocumentType::Sale, number, file.lines);
        store.noteOpen(noted);
        return noted;
    });
    takeUp(std::move(opened));
}

void CashDesk::openReturn(const CheckFile& file)
{
    requireNone();
    Check opened = storing([&] { return returnOf(file); });
    takeSharedNotices();
    takeUp(std::move(opened));
    if (!check->cardRecord().isNull()) {
        loyalty.setDocument(check->document);
    }
}

void CashDesk::openTrial(const CheckFile& file)
{
    requireNone();
    takeUp(storing([&] {
        return Check::create(EDocumentType::Sale, file.number ? *file.number : store.nextNumber(),
                             file.lines);
    }));
    isTrial = true;
}

SaleOfShop CashDesk::saleOfThisTill(const QString& which)
{
    const Check sale = store.findSaleToReturn(which);
    const QList<Check> earlier = store.returnsOf(sale.id());
    return {sale, earlier, int(earlier.size())};
}

void CashDesk::takeSharedNotices()
{
    if (returns != nullptr) {
        notices += returns->takeNotices();
    }
}

/// A return as its file says, noted as open.
Check CashDesk::returnOf(const CheckFile& file)
{
    const auto [sale, earlier, ownReturns] =
        returns != nullptr ? returns->find(file.sale) : saleOfThisTill(file.sale);
    const QList<Line> lines = returnlines::of(sale, earlier, file.lines);
    const int number = file.number ? *file.number : store.takeNumber();
    Check opened = Check::create(EDocumentType::ReturnBySale, number, lines);
    opened.document->setSaleDocumentId(sale.id());
    opened.returnsBefore = ownReturns;
    if (sale.confirmed && cardnumber::isShortened(sale.cardNumber())) {
        notices.append(Text::tr("The customer of the sale was erased, so the loyalty system is not "
                                "told of the return."));
    } else if (sale.confirmed) {
        opened.document->addCardRecord(
            Check::newCardRecord(sale.cardNumber(), loyalty.getLoyaltySystemType()));
        opened.loyalty = LoyaltyState::Unasked;
    }
    store.noteOpen(opened);
    return opened;
}

void CashDesk::changeQuantity(int position, qint64 thousandths)
{
    Line& line = requireLine(position);
    if (thousandths <= 0 || (!line.fractional && thousandths % 1000 != 0)) {
        throw Failure(line.fractional
                          ? Text::tr("The quantity must be above 0.")
                          : Text::tr("The quantity must be a whole number of pieces above 0."));
    }
    requireCountable(line, amount::lineSum(line.priceKopecks, thousandths));
    line.thousandths = thousandths;
    line.sumKopecks = amount::lineSum(line.priceKopecks, thousandths);
    lineChanged();
}

void CashDesk::changePrice(int position, qint64 kopecks)
{
    Line& line = requireLine(position);
    requireCountable(line, amount::lineSum(kopecks, line.thousandths));
    line.priceKopecks = kopecks;
    line.sumKopecks = amount::lineSum(kopecks, line.thousandths);
    lineChanged();
}

Line& CashDesk::requireLine(int position)
{
    Line* const line = requireSale().line(position);
    if (line == nullptr) {
        throw Failure(Text::tr("The check has no line %1.").arg(position));
    }
    return *line;
}

void CashDesk::requireCountable(const Line& line, qint64 newSum) const
{
    if (check->goodsKopecks() - line.sumKopecks + newSum > amount::maximumKopecks) {
        throw Failure(Text::tr("The check's sum would be more than a till can count; nothing was "
                               "changed."));
    }
}

void CashDesk::lineChanged()
{
    ImpactApplier(*check, loyalty.getLoyaltySystemType(), notices).takeOff();
    check->fillDocument();
    if (check->loyalty == LoyaltyState::Ready) {
        check->loyalty = LoyaltyState::Unasked;
    }
    showTender();
}

void CashDesk::tender(qint64 kopecks)
{
    requireSale().tenderedKopecks = kopecks;
    showTender();
}

/// Money tendered for the check is never more than its sum: the rest is change.
void CashDesk::showTender()
{
    check->tenderToDocument(
        std::min(check->tenderedKopecks.value_or(0), std::max<qint64>(0, check->moneyKopecks())));
}

qint64 CashDesk::changeKopecks(const Check& closed)
{
    return closed.tenderedKopecks ? *closed.tenderedKopecks - closed.moneyKopecks() : 0;
}

void CashDesk::requireFullTender()
{
    if (check->isReturn()) {
        return;
    }
    const qint64 sum = check->moneyKopecks();
    if (check->tenderedKopecks && *check->tenderedKopecks < sum) {
        throw Failure(Text::tr("The sum is %1 and %2 was tendered; take the %3 that are missing.")
                          .arg(amount::moneyText(sum), amount::moneyText(*check->tenderedKopecks),
                               amount::moneyText(sum - *check->tenderedKopecks)));
    }
    check->tenderToDocument(sum);
}

Check CashDesk::close()
{
    requireCheck();
    if (!check->isReturn() && check->loyalty == LoyaltyState::Unasked) {
        request();
    }
    requireFullTender();
    Check closing = *check;
    closing.confirmed =
        check->isReturn() ? !check->cardRecord().isNull() : check->loyalty == LoyaltyState::Ready;
    const bool isShared = check->isReturn() && returns != nullptr;
    if (isShared) {
        storing([&] { returns->reserve(closing); });
        takeSharedNotices();
    }
    try {
        store.close(closing, [&] {
            if (isShared) {
                returns->use(closing);
            }
            if (closing.confirmed && !loyalty.commit(closing.document)) {
                throw Failure(Text::tr("The check is not closed (the loyalty system does not "
                                       "confirm it); close it again."));
            }
        });
    } catch (const std::exception& error) {
        showTender();
        if (closing.confirmed) {
            prepareRetry();
        }
        if (dynamic_cast<const Failure*>(&error) != nullptr) {
            throw; // says itself what to do
        }
        throw Failure(
            Text::tr("The check is not closed (%1); close it again.").arg(reasonOf(error)));
    }
    settle([&] { closing.confirmed ? loyalty.clearAfterClose() : rollBack(); });
    return closing;
}

/// Building a confirmation changes the answer that it is built from, so the next attempt starts
/// from the state kept in the document.
void CashDesk::prepareRetry()
{
    try {
        loyalty.rollback(check->document);
        loyalty.restoreLoyaltySystem();
    } catch (const std::exception& error) {
        notices.append(
            Text::tr("The loyalty system does not restore its state (%1).").arg(reasonOf(error)));
        check->loyalty = LoyaltyState::Unasked;
    }
}

/// The check is closed, suspended or given up, and nothing that the loyalty system does may bring
/// it back.
template <typename LayDown>
void CashDesk::settle(const LayDown& systemLaysDown)
{
    try {
        systemLaysDown();
    } catch (const std::exception& error) {
        notices.append(
            Text::tr("The loyalty system does not lay the check down (%1).").arg(reasonOf(error)));
    }
    layDown();
}

void CashDesk::rollBack()
{
    if (!check->cardRecord().isNull()) {
        loyalty.rollback(check->document);
    }
}

void CashDesk::requireSuspendable()
{
    if (requireCheck().loyalty != LoyaltyState::Ready) {
        throw Failure(Text::tr("A check is suspended only after a successful request; request "
                               "first, or close it."));
    }
}

QString CashDesk::suspend()
{
    requireSuspendable();
    const QString id = check->id();
    storing([this] { store.suspend(*check); });
    settle([this] { loyalty.clearLoyaltyData(); });
    return id;
}

QString CashDesk::suspendToStore()
{
    requireSuspendable();
    if (sharing == nullptr) {
        throw Failure(Text::tr("No store is configured to leave the check in; suspend it here, or "
                               "name one in [store]."));
    }
    const QString id = check->id();
    storing([this] { sharing->begin(*check); });
    settle([this] { loyalty.clearLoyaltyData(); });
    try {
        sharing->settle(notices);
    } catch (const std::exception& error) { // the check is off the desk, and noted
        notices.append(reasonOf(error));
    }
    return id;
}

void CashDesk::restore(const QString& which)
{
    requireNone();
    Check suspended = storing([&] {
        if (sharing != nullptr && !store.hasSuspended(which)) {
            sharing->takeUp(which, notices);
        }
        return store.loadSuspended(which);
    });
    if (suspended.isReturn() && returns != nullptr) {
        storing([&] { returns->resume(suspended); });
        takeSharedNotices();
    }
    if (suspended.document->getCardRecord(loyalty.getLoyaltySystemType()).isNull()) {
        throw Failure(Text::tr("Check %1 has no card of this loyalty system; restore it with the "
                               "one that it was suspended with.")
                          .arg(suspended.id()));
    }
    takeUp(std::move(suspended));
    restored = true;
    loyalty.setDocument(check->document);
    try {
        loyalty.restoreLoyaltySystem();
    } catch (const std::exception& error) {
        layDown();
        throw Failure(
            Text::tr("The loyalty system does not restore its state (%1); the check stays "
                     "suspended.")
                .arg(reasonOf(error)));
    }
}

void CashDesk::abandon()
{
    requireCheck();
    giveUp();
}

/// @return false: another till had closed or abandoned the check already
bool CashDesk::giveUp()
{
    const QString id = check->id();
    const bool given = isTrial || storing([this] { return store.abandon(*check); });
    settle([this] { rollBack(); });
    if (!given) {
        notices.append(
            Text::tr("Check %1 has been closed or abandoned by another till meanwhile.").arg(id));
    }
    return given;
}

void CashDesk::leave()
{
    if (!check) {
        return;
    }
    const QString id = check->id();
    if (isTrial) {
        giveUp();
    } else if (restored) {
        notices.append(Text::tr("Check %1 stays suspended.").arg(id));
        layDown();
    } else if (giveUp()) {
        notices.append(Text::tr("Check %1 was still open and is abandoned.").arg(id));
    }
}

const Check& CashDesk::current() const
{
    return const_cast<CashDesk*>(this)->requireCheck();
}

QStringList CashDesk::takeNotices()
{
    return std::exchange(notices, {});
}

Check& CashDesk::requireCheck()
{
    if (!check) {
        throw Failure(Text::tr("No check is open; open one first."));
    }
    return *check;
}

Check& CashDesk::requireSale()
{
    if (requireCheck().isReturn()) {
        throw Failure(Text::tr("This is a return; only a sale can be changed or paid."));
    }
    return *check;
}

void CashDesk::requireNone() const
{
    if (check) {
        throw Failure(Text::tr("Check %1 is still open; close, suspend or abandon it first.")
                          .arg(check->id()));
    }
}

void CashDesk::takeUp(Check&& taken)
{
    check = std::move(taken);
    restored = false;
    isTrial = false;
    session.setDocument(check->document);
}

void CashDesk::layDown()
{
    session.setDocument({});
    loyalty.setDocument({});
    check.reset();
}

QString CashDesk::lastError() const
{
    const QString text = said(loyalty.getLastErrorString());
    return text.isEmpty() ? Text::tr("the loyalty system gives no reason") : text;
}

} // namespace till
