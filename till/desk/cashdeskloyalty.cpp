// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The cash desk's dealings with the loyalty system: card, request and points.

#include "host/document/money.h"
#include "host/http/refusallistener.h"
#include "host/loyalty/basicloyaltysystem.h"
#include "till/checks/amount.h"
#include "till/checks/checkstore.h"
#include "till/checks/storing.h"
#include "till/desk/cashdesk.h"
#include "till/desk/impactapplier.h"
#include "till/desk/serverswords.h"
#include "till/failure.h"
#include "till/reason.h"
#include "till/sharing/sharedreturns.h"
#include "till/text.h"

#include <QLoggingCategory>
#include <QScopeGuard>

#include <algorithm>

namespace till {
namespace {

Q_LOGGING_CATEGORY(logServer, "poshost.server", QtInfoMsg)

} // namespace

bool CashDesk::presentCard(const QString& number)
{
    if (!requireSale().cardRecord().isNull()) {
        throw Failure(Text::tr("The check has a card already; close or abandon it first."));
    }
    auto record = Check::newCardRecord(number, loyalty.getLoyaltySystemType());
    loyalty.setDocument(check->document);
    QString reason;
    const poshost::RefusalListener heard;
    try {
        loyalty.clearLastErrorString();
        if (loyalty.identifyByCard(record, ECardNumberType::Manual)) {
            check->document->addCardRecord(record);
            check->loyalty = LoyaltyState::Unasked;
            forgetRefusal();
            return true;
        }
        reason = lastError();
    } catch (const std::exception& error) {
        reason = reasonOf(error);
    }
    refuse(reason, serverswords::lineOf(heard, number));
    return false;
}

bool CashDesk::request()
{
    if (requireCheck().cardRecord().isNull()) {
        throw Failure(Text::tr("The check has no card, so there is nobody to ask about."));
    }
    if (check->isReturn() && !isSaleDelivered()) {
        notices.append(Text::tr("The server has not got the sale yet, so it is not asked about "
                                "the return; the return is confirmed after the sale."));
        return false;
    }
    if (!ask()) {
        return false;
    }
    if (check->points.kind != PointsChoice::Kind::None) {
        spend();
    }
    return check->loyalty == LoyaltyState::Ready;
}

/// What was handed over counts as delivered once the store says so.
bool CashDesk::isSaleDelivered()
{
    const bool isGone =
        storing([this] { return store.isDelivered(check->document->getSaleDocumentId()); });
    return isGone && (returns == nullptr || returns->isSaleDelivered().value_or(true));
}

/// One request for the check without this system's impacts, and its effect on the check.
bool CashDesk::ask()
{
    ImpactApplier(*check, loyalty.getLoyaltySystemType(), notices).takeOff();
    check->fillDocument();
    check->tenderToDocument(0);
    QString reason;
    const poshost::RefusalListener heard;
    if (!callRequest(reason)) {
        refuse(reason, serverswords::lineOf(heard, check->cardNumber()));
        return false;
    }
    check->loyalty = LoyaltyState::Ready;
    forgetRefusal();
    showTender();
    return true;
}

bool CashDesk::timedRequest()
{
    const auto begun = std::chrono::steady_clock::now();
    const auto ended = qScopeGuard([this, begun] {
        if (tellTime) {
            tellTime(std::chrono::duration_cast<std::chrono::microseconds>(
                std::chrono::steady_clock::now() - begun));
        }
    });
    return loyalty.request(check->document);
}

bool CashDesk::callRequest(QString& reason)
{
    try {
        loyalty.clearLastErrorString();
        if (timedRequest()) {
            takeOver();
            return true;
        }
        reason = lastError();
    } catch (const std::exception& error) {
        reason = reasonOf(error);
    }
    return false;
}

void CashDesk::takeOver()
{
    check->cashierMessages = loyalty.getMessagesToCashier();
    check->clientMessages = loyalty.getMessagesToClient();
    if (check->isReturn()) {
        return; // a return carries the shares of its sale and no impacts of its own
    }
    ImpactApplier applier(*check, loyalty.getLoyaltySystemType(), notices);
    applier.applyDiscounts(loyalty.getDiscountImpacts());
    applier.noteAccruals(loyalty.getBonusRecords());
    check->systemEarnKopecks = money::toKopecks(loyalty.getPointsForEarn());
}

void CashDesk::forgetRefusal()
{
    check->refusal.clear();
    check->serversWords.clear();
}

/// @param words what the server wrote, for whoever helps; empty for nothing
void CashDesk::refuse(const QString& reason, const QString& words)
{
    ImpactApplier(*check, loyalty.getLoyaltySystemType(), notices).takeOff();
    check->fillDocument();
    check->loyalty = LoyaltyState::Refused;
    check->refusal = reason;
    check->serversWords = words;
    showTender();
    notices.append(check->isReturn()
                       ? Text::tr("The loyalty system does not answer about the return (%1); it "
                                  "is confirmed all the same.")
                             .arg(reason)
                       : Text::tr("The sale goes on without the loyalty system (%1).").arg(reason));
    if (!words.isEmpty()) {
        qCInfo(logServer).noquote() << "A refusal, in the server's words:" << words;
        notices.append(Text::tr("The server says: %1").arg(words));
    }
}

qint64 CashDesk::availablePoints()
{
    if (!check || check->isReturn() || check->loyalty != LoyaltyState::Ready) {
        return 0;
    }
    check->tenderToDocument(0);
    std::optional<qint64> kopecks;
    try {
        // once points are set, only the card record still knows what may be spent
        kopecks = amount::kopecksNotAbove(check->pointsTouched
                                              ? check->cardRecord()->getPointsForSpend()
                                              : loyalty.getPointsForSpend(check->document));
    } catch (const std::exception&) {
        // none is a usable number either
    }
    showTender();
    if (!kopecks) {
        notices.append(Text::tr("The loyalty system gives no usable number of points to spend; "
                                "none can be spent."));
    }
    return std::clamp<qint64>(kopecks.value_or(0), 0,
                              check->moneyKopecks() + check->spentKopecks());
}

qint64 CashDesk::choosePoints(const PointsChoice& choice)
{
    const LoyaltyState state = requireSale().loyalty;
    if (state == LoyaltyState::NoCard || state == LoyaltyState::Refused) {
        throw Failure(Text::tr("There are no points to pay with: the sale goes without the loyalty "
                               "system."));
    }
    check->points = choice;
    if ((state == LoyaltyState::Unasked || check->pointsTouched) && !ask()) {
        return 0;
    }
    if (choice.kind != PointsChoice::Kind::None) {
        spend();
    }
    return check->spentKopecks();
}

void CashDesk::spend()
{
    const qint64 available = availablePoints();
    const bool all = check->points.kind == PointsChoice::Kind::All;
    const qint64 wanted = all ? available : std::min(check->points.kopecks, available);
    if (!all && wanted < check->points.kopecks) {
        notices.append(
            Text::tr("Of the %1 points only %2 can be spent.")
                .arg(amount::moneyText(check->points.kopecks), amount::moneyText(wanted)));
    }
    if (wanted <= 0) {
        return;
    }
    check->tenderToDocument(0);
    check->pointsTouched = true;
    try {
        const qint64 placed = place(wanted);
        if (placed < wanted) {
            notices.append(Text::tr("Of the %1 points %2 found a place on the lines.")
                               .arg(amount::moneyText(wanted), amount::moneyText(placed)));
        }
    } catch (const std::exception& error) {
        notices.append(
            Text::tr("The points cannot be spent (%1); the loyalty system is asked again "
                     "before the check closes.")
                .arg(reasonOf(error)));
        check->points = {};
        lineChanged();
    }
    showTender();
}

qint64 CashDesk::place(qint64 wanted)
{
    loyalty.setPointsForSpend(check->document, money::fromKopecks(wanted));
    loyalty.spendPoints();
    ImpactApplier applier(*check, loyalty.getLoyaltySystemType(), notices);
    const qint64 placed = applier.applyPoints(loyalty.getBonusImpactsForSpend());
    loyalty.setPointsForSpend(check->document, money::fromKopecks(placed));
    if (placed > 0) {
        // exactly once: every further call would scale the accruals again
        loyalty.recalculatePointsForEarn();
        check->systemEarnKopecks = money::toKopecks(loyalty.getPointsForEarn());
    }
    applier.countEarned();
    return placed;
}

} // namespace till
