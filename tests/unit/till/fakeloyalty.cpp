// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/fakeloyalty.h"

#include "host/document/discountimpact.h"
#include "host/services/dbqueuebroker.h"
#include "host/services/session.h"

using namespace Qt::StringLiterals;

namespace tests {
namespace {

const QString owner = u"Fake"_s;

QString describe(const QSharedPointer<AbstractDocument>& document)
{
    QString text = u"%1 %2"_s.arg(document->getDocumentType())
                       .arg(QString::number(document->getCheckSum(), 'f', 2));
    for (const auto& item : document->getGoodsItems()) {
        text += u" [%1 %2x%3=%4 back %5 points %6]"_s.arg(item->getPosnum())
                    .arg(item->getQuantity())
                    .arg(item->getPrice())
                    .arg(item->getSumb())
                    .arg(item->getQuantBack().toString())
                    .arg(item->getBonusImpactSum());
    }
    return text + u" impacts %1"_s.arg(document->getImpacts().size());
}

} // namespace

bool FakeLoyalty::identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord, ECardNumberType)
{
    calls.append(u"identify"_s);
    // the session and the watcher must hold the same document before anybody is asked
    if (Singleton<Session>::instance->getDocument() != document || document.isNull()) {
        calls.append(u"no document!"_s);
    }
    if (onAsk) {
        onAsk();
    }
    if (!knowsCard) {
        lastError = tr::Tr(u"cardUnknown"_s, u"Карта неизвестна"_s);
        return false;
    }
    const auto client = QSharedPointer<Client>::create();
    client->setName(u"Анна Соколова"_s);
    cardRecord->getCard()->setClient(client);
    cardRecord->setBonusBalance(balance);
    return true;
}

bool FakeLoyalty::request(const QSharedPointer<AbstractDocument>& check)
{
    calls.append(u"request"_s);
    requested.append(describe(check));
    if (onAsk) {
        onAsk();
    }
    if (!answers) {
        lastError = tr::Tr(u"requestNoConnection"_s, u"Нет связи с сервером"_s);
        return false;
    }
    const auto record = check->getCardRecord(loyaltySystemType);
    record->setPointsForSpend(spendable);
    pointsForSpend = spendable;
    pointsForEarn = 0;
    discountImpacts.clear();
    bonusRecords.clear();
    for (auto it = discounts.cbegin(); it != discounts.cend(); ++it) {
        discountImpacts.append(discount(record, it.key(), it.value(), minPriceIgnored));
    }
    for (auto it = awards.cbegin(); it != awards.cend(); ++it) {
        DocumentBonusRecord award;
        award.position = it.key();
        award.bonusAmount = it.value();
        award.accrual = true;
        bonusRecords.append(award);
        pointsForEarn += it.value();
    }
    record->setPointsForEarn(pointsForEarn);
    messagesToCashier = QStringList{u"Кассиру"_s};
    messagesToClient = QStringList{u"Клиенту"_s};
    answer = u"answer to "_s + describe(check);
    check->setPluginValue(owner, u"answer"_s, answer);
    return true;
}

bool FakeLoyalty::commit(const QSharedPointer<AbstractDocument>& check)
{
    calls.append(u"commit"_s);
    if (!commits) {
        return false;
    }
    // like an answer document that is shared: what is inserted stays in it
    for (const auto& impact : check->getImpacts()) {
        answer += u" used %1"_s.arg(QString::number(impact->getTotals()->getDiscountSum(), 'f', 2));
    }
    const QString payload = check->getDocumentType() == 25
                                ? u"return of "_s + check->getSaleDocumentId() + describe(check)
                                : answer + u" paid %1"_s.arg(check->getPaymentSum());
    Singleton<DBQueueBroker>::instance->addToQueue(
        u"fake"_s,
        {{u"payload"_s, payload},
         {u"headers"_s, QVariantMap{{u"Authorization"_s, u"Basic c2VjcmV0"_s}}},
         {u"urls"_s, QVariantMap{{u"1"_s, u"http://127.0.0.1:1/try"_s},
                                 {u"2"_s, u"http://127.0.0.1:1/confirm"_s}}}},
        QString());
    return true;
}

bool FakeLoyalty::rollback(const QSharedPointer<AbstractDocument>& check)
{
    calls.append(u"rollback"_s);
    if (onRollback) {
        onRollback();
    }
    return BasicLoyaltySystem::rollback(check);
}

double FakeLoyalty::getPointsForSpend(const QSharedPointer<AbstractDocument>& check)
{
    if (onPoints) {
        onPoints();
    }
    return std::min(pointsForSpend, check->getSumToPay());
}

void FakeLoyalty::setPointsForSpend(const QSharedPointer<AbstractDocument>&, double points)
{
    calls.append(u"set %1"_s.arg(QString::number(points, 'f', 2)));
    pointsForSpend = points;
}

bool FakeLoyalty::spendPoints()
{
    calls.append(u"spend of %1"_s.arg(QString::number(document->getSumToPay(), 'f', 2)));
    if (onSpend) {
        onSpend();
    }
    discountImpacts.clear();
    bonusImpactsForSpend.clear();
    const auto record = document->getCardRecord(loyaltySystemType);
    if (placed.isEmpty()) {
        bonusImpactsForSpend.append(
            points(record, 1, std::min(pointsForSpend, document->getSumToPay())));
    }
    for (auto it = placed.cbegin(); it != placed.cend(); ++it) {
        bonusImpactsForSpend.append(points(record, it.key(), it.value() - 0.01, 0.01));
    }
    return true;
}

bool FakeLoyalty::recalculatePointsForEarn()
{
    calls.append(u"recalculate to %1 of %2"_s.arg(
        QString::number(document->getCheckSum(), 'f', 2),
        QString::number(document->getCheckSum() + pointsForSpend, 'f', 2)));
    const double ratio = document->getCheckSum() / (document->getCheckSum() + pointsForSpend);
    pointsForEarn = 0;
    for (DocumentBonusRecord& record : bonusRecords) {
        record.bonusAmount *= ratio;
        pointsForEarn += record.bonusAmount;
    }
    document->getCardRecord(loyaltySystemType)->setPointsForEarn(pointsForEarn);
    return true;
}

bool FakeLoyalty::restoreLoyaltySystem()
{
    calls.append(u"restore"_s);
    if (onRestore) {
        onRestore();
    }
    answer = document->getPluginValue(owner, u"answer"_s, {}).toString();
    pointsForSpend = document->getCardRecord(loyaltySystemType)->getPointsForSpend();
    return true;
}

void FakeLoyalty::clearAfterClose()
{
    calls.append(u"clear"_s);
    BasicLoyaltySystem::clearAfterClose();
}

QSharedPointer<DocumentImpact>
FakeLoyalty::discount(const QSharedPointer<DocumentCardRecord>& record, int position, double sum,
                      bool minPriceIgnored)
{
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setCardRecord(record);
    detail->setDateTime(QDateTime(QDate(2026, 3, 5), QTime(14, 20, 31, 250)));
    detail->setDiscountType(EDiscountType::LoyaltyDiscount);
    detail->setDiscountMode(EDiscountMode::Sum);
    detail->setDiscountName(u"Скидка"_s);
    detail->setDiscountObject(EDiscountObject::Position);
    detail->setPosition(position);
    detail->setDiscountSum(sum);
    detail->setImpactSource(EImpactSource::LoyaltySystem);
    detail->setMinPriceIgnored(minPriceIgnored);
    return QSharedPointer<DiscountImpact>::create(detail);
}

QSharedPointer<BonusImpact> FakeLoyalty::points(const QSharedPointer<DocumentCardRecord>& record,
                                                int position, double first, double second)
{
    const auto detail = discount(record, position, first)->getTotals();
    detail->setCardIndex(record.isNull() ? QVariant() : QVariant(record->getCodeInternal()));
    detail->setDiscountType(EDiscountType::BonusPayment);
    detail->setDiscountName(u"Баллы"_s);
    detail->setDiscountRate(first);
    const auto impact = QSharedPointer<BonusImpact>::create(detail);
    impact->addDetailForPosition(position, first);
    impact->addDetailForPosition(position, second);
    return impact;
}

} // namespace tests
