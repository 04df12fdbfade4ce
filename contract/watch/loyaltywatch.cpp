// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/watch/loyaltywatch.h"

#include "contract/watch/grants.h"
#include "host/core/basicexception.h"
#include "host/services/dbqueuebroker.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The code of the system that it stands in for.
constexpr int loyaltySystemCode = 15;

/// Where the goods that were asked about are kept in the document.
QString owner()
{
    return u"LoyaltyWatch"_s;
}

QString goodsKey()
{
    return u"goods"_s;
}

tr::Tr refusal()
{
    return {u"watchRefusal"_s, u"Наблюдатель отказывает, как его просили"_s};
}

/// A message that the queue can keep and never delivers: nobody answers at that port.
QVariantMap messageFor(const AbstractDocument& check)
{
    const QString address = u"http://127.0.0.1:9/"_s;
    return {{u"payload"_s, u"<Watched><id>%1</id></Watched>"_s.arg(check.getDocumentId())},
            {u"headers"_s, QVariantMap{{u"Content-Type"_s, u"application/xml"_s},
                                       {u"Authorization"_s, u"Basic d2F0Y2g="_s}}},
            {u"urls"_s, QVariantMap{{u"1"_s, address}}}};
}

} // namespace

LoyaltyWatch::LoyaltyWatch() : order(loyaltySystemCode)
{
    loyaltySystemType = loyaltySystemCode;
    setOption(LoyaltySystemOption::ConfirmThroughQueue, true);
}

LoyaltyWatch::~LoyaltyWatch()
{
    order.end();
}

bool LoyaltyWatch::init()
{
    order.init();
    return BasicLoyaltySystem::init();
}

bool LoyaltyWatch::deinit()
{
    order.deinit(document);
    return BasicLoyaltySystem::deinit();
}

bool LoyaltyWatch::failsNow(const QString& operation)
{
    const int call = ++callCounts[operation];
    const QStringList failing = qEnvironmentVariable("POSHOST_WATCH_FAIL").split(u',');
    return failing.contains(u"%1:%2"_s.arg(operation).arg(call)) ||
           (call == 1 && failing.contains(operation));
}

bool LoyaltyWatch::refuse()
{
    lastError = refusal();
    return false;
}

bool LoyaltyWatch::identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord,
                                  ECardNumberType type)
{
    order.identify(document, cardRecord);
    if (!BasicLoyaltySystem::identifyByCard(cardRecord, type) || failsNow(u"identifyByCard"_s)) {
        return refuse();
    }
    const auto client = QSharedPointer<Client>::create();
    client->setName(u"Наблюдаемый покупатель"_s);
    cardRecord->getCard()->setClient(client);
    return true;
}

bool LoyaltyWatch::request(const QSharedPointer<AbstractDocument>& check)
{
    if (!order.request(check, document)) {
        return refuse();
    }
    const auto cardRecord = check->getCardRecord(loyaltySystemType);
    const bool answered = !cardRecord.isNull() && !failsNow(u"request"_s);
    order.requested(check, answered);
    if (!answered) {
        return refuse();
    }
    grant(*check, cardRecord);
    check->setPluginValue(owner(), goodsKey(), watch::Order::goodsOf(*check));
    return true;
}

void LoyaltyWatch::grant(AbstractDocument& check,
                         const QSharedPointer<DocumentCardRecord>& cardRecord)
{
    const watch::Grants grants(check, cardRecord);
    discountImpacts = grants.discounts();
    bonusRecords = grants.accruals();
    bonusImpactsForSpend.clear();
    pointsForSpend = grants.points();
    pointsForEarn = grants.earned();
    cardRecord->setBonusBalance(QVariant(grants.points()));
    cardRecord->setPointsForSpend(pointsForSpend);
    cardRecord->setPointsForEarn(QVariant(pointsForEarn));
}

bool LoyaltyWatch::spendPoints()
{
    bonusImpactsForSpend.clear();
    discountImpacts.clear();
    if (order.spend(document)) {
        const double sum = std::min(pointsForSpend, document->getSumToPay());
        bonusImpactsForSpend =
            watch::spendings(*document, document->getCardRecord(loyaltySystemType), sum);
    }
    return true;
}

bool LoyaltyWatch::recalculatePointsForEarn()
{
    if (order.recalculate(document)) {
        const double now = document->getCheckSum();
        const double before = now + pointsForSpend;
        pointsForEarn = 0;
        for (DocumentBonusRecord& record : bonusRecords) {
            record.bonusAmount *= before > 0 ? now / before : 0;
            pointsForEarn += record.bonusAmount;
        }
    }
    return true;
}

double LoyaltyWatch::getPointsForSpend(const QSharedPointer<AbstractDocument>& check)
{
    order.askPoints(check, document);
    return check.isNull() ? 0.0 : std::min(pointsForSpend, check->getSumToPay());
}

void LoyaltyWatch::setPointsForSpend(const QSharedPointer<AbstractDocument>& check, double points)
{
    order.setPoints(check, document);
    BasicLoyaltySystem::setPointsForSpend(check, points);
}

bool LoyaltyWatch::commit(const QSharedPointer<AbstractDocument>& check)
{
    if (!order.commit(check, document)) {
        return false;
    }
    if (failsNow(u"commit"_s)) {
        throw BasicException(refusal());
    }
    if (DBQueueBroker* const queue = Singleton<DBQueueBroker>::instance) {
        queue->addToQueue(u"watch"_s, messageFor(*check), QString());
    }
    return true;
}

bool LoyaltyWatch::rollback(const QSharedPointer<AbstractDocument>& /*check*/)
{
    order.clear("rollback");
    BasicLoyaltySystem::clearLoyaltyData();
    return true;
}

bool LoyaltyWatch::cancel()
{
    order.clear("cancel");
    BasicLoyaltySystem::clearLoyaltyData();
    return true;
}

void LoyaltyWatch::clearLoyaltyData()
{
    order.clear("clearLoyaltyData");
    BasicLoyaltySystem::clearLoyaltyData();
}

void LoyaltyWatch::clearAfterClose()
{
    order.clearAfterClose();
    BasicLoyaltySystem::clearLoyaltyData();
}

bool LoyaltyWatch::restoreLoyaltySystem()
{
    if (!order.restore(document)) {
        return true;
    }
    const QVariant goods = document->getPluginValue(owner(), goodsKey(), QVariant());
    order.restored(document, goods.toString());
    const auto cardRecord = document->getCardRecord(loyaltySystemType);
    if (!cardRecord.isNull()) {
        pointsForSpend = cardRecord->getPointsForSpend();
        pointsForEarn = cardRecord->getPointsForEarn().toDouble();
    }
    document->refreshLoyaltyData();
    return true;
}
