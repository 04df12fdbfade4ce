// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/fuzz/shopscene.h"

#include "client/loyaltysystemtype.h"
#include "host/core/basicexception.h"
#include "host/services/sessioncontext.h"

using namespace Qt::StringLiterals;

namespace {

QSharedPointer<GoodsItem> makeLine(int position, double price, double quantity)
{
    const auto line = QSharedPointer<GoodsItem>::create();
    line->setPosnum(position);
    line->setCode(u"100%1"_s.arg(position));
    line->setPrice(price);
    line->setQuantity(quantity);
    line->setSumb(price * quantity);
    line->setMinPrice(price / 2);
    return line;
}

/// The cashier pays with points and closes the check.
void payAndClose(OpenOrva& orva, const QSharedPointer<Document>& check, double share)
{
    orva.setPointsForSpend(check, orva.getPointsForSpend(check) * share);
    orva.spendPoints();
    for (const auto& impact : orva.getBonusImpactsForSpend()) {
        check->addImpact(impact);
    }
    orva.recalculatePointsForEarn();
    orva.commit(check);
    orva.updatePluginData();
}

/// Another process takes the check up from what was written into it.
void takeUpAgain(const QSharedPointer<Document>& check)
{
    OpenOrva orva;
    orva.init();
    orva.setDocument(check);
    orva.restoreLoyaltySystem();
    orva.updatePluginData();
    orva.commit(check);
}

} // namespace

ShopScene::ShopScene()
{
    session.setSessionContext(QSharedPointer<SessionContext>::create(u"till"_s));
    Singleton<Config>::instance = &config;
    Singleton<Session>::instance = &session;
    Singleton<DBQueueBroker>::instance = &queue;
    MockFactory<RestClient>::mocked = &transport;
    MockFactory<CurrentTime>::mocked = &clock;
}

ShopScene::~ShopScene()
{
    MockFactory<CurrentTime>::mocked = nullptr;
    MockFactory<RestClient>::mocked = nullptr;
    Singleton<DBQueueBroker>::instance = nullptr;
    Singleton<Session>::instance = nullptr;
    Singleton<Config>::instance = nullptr;
}

QSharedPointer<Document> ShopScene::open(EDocumentType type)
{
    const auto check = QSharedPointer<Document>::create();
    check->setDocumentId(u"check"_s);
    check->setCheckNumber(117);
    check->setDocumentType(type);
    check->setSaleDocumentId(u"sale"_s);
    check->addCardRecord(QSharedPointer<DocumentCardRecord>::create(
        QSharedPointer<Card>::create(u"2200000000017"_s), orva::loyaltySystemType, 9));
    check->setGoodsItems({makeLine(1, 149.9, 2), makeLine(2, 89.9, 0.765), makeLine(3, 7.5, 1)});
    session.setDocument(check);
    return check;
}

void playVisit(ShopScene& scene)
{
    for (const EDocumentType type : {EDocumentType::Sale, EDocumentType::ReturnBySale}) {
        for (const double share : {1.0, 0.37}) {
            const auto check = scene.open(type);
            OpenOrva orva;
            orva.init();
            orva.setDocument(check);
            auto card = check->getCardRecord(orva::loyaltySystemType);
            if (!orva.identifyByCard(card, ECardNumberType::Manual) || !orva.request(check)) {
                continue;
            }
            for (const auto& impact : orva.getDiscountImpacts()) {
                check->addImpact(impact);
            }
            try {
                payAndClose(orva, check, share);
                takeUpAgain(check);
            } catch (const BasicException&) {
                // a host or the client may refuse what it cannot send
            }
        }
    }
}
