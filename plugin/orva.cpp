// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Construction, configuration and the exchanges with the server.

#include "plugin/orva.h"

#include "client/defaulttimeout.h"
#include "client/exception.h"
#include "client/loyaltysystemtype.h"
#include "client/service.h"
#include "host/services/config.h"
#include "host/services/dbqueuebroker.h"
#include "host/services/restclient.h"
#include "host/services/session.h"
#include "plugin/loggerlookup.h"

#include <log4qt/logger.h>

using namespace Qt::StringLiterals;

Orva::Orva()
    : interface(QSharedPointer<orva::Interface>(new orva::Interface)), logger(findLogger(u"orva"_s))
{
    loyaltySystemType = orva::loyaltySystemType;
    setOption(LoyaltySystemOption::ConfirmThroughQueue, true);
}

Orva::~Orva() = default;

bool Orva::init()
{
    Config* const config = orva::service<Config>();
    interface->setUrl(config->getString(u"Orva:serverUrl"_s, QString()));
    const QString merchantId = config->getString(u"Orva:merchantId"_s, QString());
    const QString pos = config->getString(u"Orva:pos"_s, QString());
    interface->setCashData(merchantId, pos);
    interface->setTimeout(config->getInt(u"Orva:timeout"_s, orva::defaultTimeoutSeconds));
    const QString user = config->getString(u"Orva:user"_s, QString());
    const QString password = config->getString(u"Orva:password"_s, QString());
    const QString apiKey = config->getString(u"Orva:apikey"_s, QString());
    interface->setAuthData(user, password, apiKey);
    return registerLoyaltySystem();
}

bool Orva::identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord, ECardNumberType)
{
    logger->info(u"Получение информации о карте Orva"_s);
    try {
        interface->precheck(orva::service<Session>()->getDocument(), cardRecord);
    } catch (const orva::Exception& exception) {
        return fail(exception);
    }
    return true;
}

bool Orva::request(const QSharedPointer<AbstractDocument>& check)
{
    logger->info(u"Запрос к системе лояльности"_s);
    try {
        const auto cardRecord = cardRecordOf(check);
        const orva::RequestResult result = interface->precheck(check, cardRecord);
        takePoints(cardRecord);
        discountImpacts = result.discountImpacts;
        bonusRecords = result.bonusRecords;
        messagesToCashier = result.posMessages;
        messagesToClient = result.checkMessages;
        updatePluginData();
    } catch (const orva::Exception& exception) {
        return fail(exception);
    }
    return true;
}

QSharedPointer<DocumentCardRecord>
Orva::cardRecordOf(const QSharedPointer<AbstractDocument>& check) const
{
    return check.isNull() ? QSharedPointer<DocumentCardRecord>()
                          : check->getCardRecord(loyaltySystemType);
}

void Orva::takePoints(const QSharedPointer<DocumentCardRecord>& cardRecord)
{
    pointsForSpend = cardRecord.isNull() ? 0.0 : cardRecord->getPointsForSpend();
    pointsForEarn = cardRecord.isNull() ? 0.0 : cardRecord->getPointsForEarn().toDouble();
}

bool Orva::fail(const orva::Exception& exception)
{
    // Empty for most failures; the line is written all the same, as a mark in the log.
    logger->error(exception.detail);
    lastError = exception.tr();
    return false;
}

bool Orva::commit(const QSharedPointer<AbstractDocument>& check)
{
    logger->info(u"Подтверждение операций в системе лояльности"_s);
    const bool isReturn = !check.isNull() &&
                          check->getDocumentType() == static_cast<int>(EDocumentType::ReturnBySale);
    const auto cardRecord = cardRecordOf(check);
    // Neither is kept from the client when it is missing: what it cannot do without, it refuses.
    const QVariantMap message = isReturn ? interface->getBackBySaleRequest(check, cardRecord)
                                         : interface->getSaleRequest(check, cardRecord);
    orva::service<DBQueueBroker>()->addToQueue(u"orva"_s, message, QString());
    return true;
}

bool Orva::rollback(const QSharedPointer<AbstractDocument>&)
{
    clearLoyaltyData();
    return true;
}
