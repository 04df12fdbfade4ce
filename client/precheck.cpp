// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The pre-check exchange.

#include "client/interface.h"
#include "client/required.h"
#include "host/document/client.h"

#include <log4qt/logger.h>

using namespace Qt::StringLiterals;

namespace orva {

RequestResult Interface::precheck(const QSharedPointer<AbstractDocument>& document,
                                  const QSharedPointer<DocumentCardRecord>& cardRecord)
{
    logger->debug(u"Выполнение предварительного запроса"_s);
    const QDomDocument request = getRequestPayload(document, cardRecord);
    sendRequest(RequestType::Precheck, request);
    const QDomElement root = lastResponse.documentElement();

    // Written one by one, without a transaction: what was read stays when a later reader throws.
    const auto client = getClient(root);
    DocumentCardRecord& record = requireCardRecord(cardRecord);
    requireCard(record)->setClient(client);
    record.setBonusBalance(QVariant(getBalance(root)));
    record.setPointsForSpend(getPointsForSpend(root));
    record.setPointsForEarn(QVariant(getPointsForEarn(root)));

    RequestResult result;
    result.discountImpacts = getDiscountImpacts(cardRecord, root);
    result.bonusRecords = getBonusRecords(cardRecord, root);
    result.posMessages = getMessages(root, u"pos"_s);
    result.checkMessages = getMessages(root, u"check"_s);
    return result;
}

} // namespace orva
