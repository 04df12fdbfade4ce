// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The rules about the operations on a check.

#include "contract/watch/order.h"
#include "host/document/edocumenttype.h"
#include "host/services/dbqueuebroker.h"

namespace watch {

void Order::identify(const DocumentPointer& watched,
                     const QSharedPointer<DocumentCardRecord>& cardRecord)
{
    if (begin("identifyByCard") && hasDocument("identifyByCard", watched, watched)) {
        requireSession("identifyByCard", watched);
        requireCard("identifyByCard", cardRecord);
    }
}

bool Order::request(const DocumentPointer& check, const DocumentPointer& watched)
{
    if (!begin("request") || !hasDocument("request", check, watched)) {
        return false;
    }
    requireSession("request", check);
    requireType("request", *check);
    requireCard("request", check->getCardRecord(systemType));
    if (carriesImpacts(*check, std::nullopt)) {
        findings.report(rule::impactsLeft, "request");
    }
    return true;
}

void Order::requested(const DocumentPointer& check, bool answered)
{
    if (answered) {
        held =
            Held{.documentId = check->getDocumentId(), .goods = goodsOf(*check), .answered = true};
    } else if (held) {
        // what an earlier request gave is still there, but the check goes on without it
        held->answered = false;
    }
}

void Order::askPoints(const DocumentPointer& check, const DocumentPointer& watched)
{
    if (begin("getPointsForSpend")) {
        hasDocument("getPointsForSpend", check, watched);
    }
}

void Order::setPoints(const DocumentPointer& check, const DocumentPointer& watched)
{
    if (begin("setPointsForSpend") && hasDocument("setPointsForSpend", check, watched) &&
        !isAnswered(check)) {
        findings.report(rule::spendWithoutRequest, "setPointsForSpend");
    }
}

bool Order::spend(const DocumentPointer& watched)
{
    if (!begin("spendPoints") || !hasDocument("spendPoints", watched, watched)) {
        return false;
    }
    if (!isAnswered(watched)) {
        findings.report(rule::spendWithoutRequest, "spendPoints");
        return false;
    }
    requireSession("spendPoints", watched);
    requireCard("spendPoints", watched->getCardRecord(systemType));
    if (carriesImpacts(*watched, EDiscountType::BonusPayment)) {
        findings.report(rule::pointsLeft, "spendPoints");
    }
    held->spent = true;
    held->recalculated = false;
    return true;
}

bool Order::recalculate(const DocumentPointer& watched)
{
    if (!begin("recalculatePointsForEarn") ||
        !hasDocument("recalculatePointsForEarn", watched, watched)) {
        return false;
    }
    if (!isAnswered(watched) || !held->spent) {
        findings.report(rule::recalculateWithoutSpending, "recalculatePointsForEarn");
    } else if (held->recalculated) {
        findings.report(rule::recalculateTwice, "recalculatePointsForEarn");
    } else {
        held->recalculated = true;
    }
    return true;
}

bool Order::commit(const DocumentPointer& check, const DocumentPointer& watched)
{
    if (!begin("commit") || !hasDocument("commit", check, watched)) {
        return false;
    }
    requireType("commit", *check);
    requireCard("commit", check->getCardRecord(systemType));
    if (Singleton<DBQueueBroker>::instance == nullptr) {
        findings.report(rule::missingService, "commit");
    }
    // a return's confirmation is built anew from the document
    const bool isReturn = check->getDocumentType() == int(EDocumentType::ReturnBySale);
    if (held && held->committed) {
        findings.report(rule::commitTwice, "commit");
    } else if (!isReturn && !isAnswered(check)) {
        findings.report(rule::commitWithoutRequest, "commit");
    } else if (!isReturn && held->goods != goodsOf(*check)) {
        findings.report(rule::changedSinceRequest, "commit");
    }
    if (!held) {
        held = Held{.documentId = check->getDocumentId(), .goods = QString()};
    }
    held->committed = true;
    return true;
}

bool Order::restore(const DocumentPointer& watched)
{
    if (!begin("restoreLoyaltySystem") || !hasDocument("restoreLoyaltySystem", watched, watched)) {
        return false;
    }
    requireCard("restoreLoyaltySystem", watched->getCardRecord(systemType));
    if (held) {
        findings.report(rule::restoreOverData, "restoreLoyaltySystem");
    }
    return true;
}

void Order::restored(const DocumentPointer& watched, const QString& goods)
{
    const bool isReturn = watched->getDocumentType() == int(EDocumentType::ReturnBySale);
    if (goods.isNull() && !isReturn) {
        findings.report(rule::restoreWithoutState, "restoreLoyaltySystem");
    }
    held.reset();
    if (!goods.isNull()) {
        held = Held{.documentId = watched->getDocumentId(), .goods = goods, .answered = true};
    }
}

void Order::clear(const char* call)
{
    if (begin(call)) {
        held.reset();
    }
}

void Order::clearAfterClose()
{
    if (!begin("clearAfterClose")) {
        return;
    }
    if (held && held->committed) {
        closed.insert(held->documentId);
    } else {
        findings.report(rule::clearedUnconfirmed, "clearAfterClose");
    }
    held.reset();
}

} // namespace watch
