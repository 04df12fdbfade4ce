// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The rules about the object's life and about the document that a call is about.

#include "contract/watch/order.h"

#include "host/document/edocumenttype.h"
#include "host/services/config.h"
#include "host/services/session.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace watch {

QString Order::goodsOf(const AbstractDocument& document)
{
    QStringList lines;
    const auto items = document.getGoodsItems();
    for (const auto& item : items) {
        lines.append(u"%1 %2 %3 %4"_s.arg(QString::number(item->getPosnum()), item->getCode(),
                                          QString::number(item->getQuantity(), 'f', 3),
                                          QString::number(item->getSumb(), 'f', 2)));
    }
    // never null: a document without goods is something that can be asked about as well
    return lines.join(u'\n') + u'\n';
}

void Order::init()
{
    findings.countCall();
    if (life != Life::Made) {
        findings.report(rule::initTwice, "init");
    }
    life = Life::Working;
    if (Singleton<Config>::instance == nullptr) {
        findings.report(rule::missingService, "init");
    }
}

void Order::deinit(const DocumentPointer& watched)
{
    if (!begin("deinit")) {
        return;
    }
    life = Life::Over;
    if (!watched.isNull()) {
        findings.report(rule::documentLeft, "deinit");
    }
    findings.summarise();
}

void Order::end()
{
    if (life == Life::Working) {
        findings.report(rule::endedWithoutDeinit, "the destructor");
        findings.summarise();
    }
}

bool Order::begin(const char* call)
{
    findings.countCall();
    if (std::this_thread::get_id() != thread) {
        findings.report(rule::otherThread, call);
        return false;
    }
    if (life == Life::Working) {
        return true;
    }
    findings.report(life == Life::Made ? rule::beforeInit : rule::afterDeinit, call);
    return false;
}

bool Order::hasDocument(const char* call, const DocumentPointer& check,
                        const DocumentPointer& watched)
{
    if (check.isNull() || watched.isNull()) {
        findings.report(rule::noDocument, call);
        return false;
    }
    if (check != watched) {
        findings.report(rule::otherDocument, call);
        return false;
    }
    const QString id = check->getDocumentId();
    if (closed.contains(id)) {
        findings.report(rule::afterClose, call);
        return false;
    }
    if (held && held->documentId != id) {
        findings.report(rule::notCleared, call);
        held.reset();
    }
    return true;
}

void Order::requireSession(const char* call, const DocumentPointer& check)
{
    Session* const session = Singleton<Session>::instance;
    if (session == nullptr) {
        findings.report(rule::missingService, call);
    } else if (session->getDocument() != check) {
        findings.report(rule::sessionDocument, call);
    }
}

void Order::requireCard(const char* call, const QSharedPointer<DocumentCardRecord>& cardRecord)
{
    if (cardRecord.isNull() || cardRecord->getCard().isNull()) {
        findings.report(rule::noCard, call);
    }
}

void Order::requireType(const char* call, const AbstractDocument& check)
{
    const int type = check.getDocumentType();
    if (type != int(EDocumentType::Sale) && type != int(EDocumentType::ReturnBySale)) {
        findings.report(rule::documentType, call);
    }
}

bool Order::isAnswered(const DocumentPointer& check) const
{
    return held && held->documentId == check->getDocumentId() && held->answered;
}

bool Order::carriesImpacts(const AbstractDocument& check,
                           std::optional<EDiscountType::type> type) const
{
    const auto impacts = check.getImpacts();
    return std::any_of(impacts.cbegin(), impacts.cend(), [&](const auto& impact) {
        const auto totals = impact->getTotals();
        return totals->getCardType() == QVariant(systemType) &&
               (!type || totals->getDiscountType() == *type);
    });
}

} // namespace watch
