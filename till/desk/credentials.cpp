// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/credentials.h"

#include "host/loyalty/basicloyaltysystem.h"
#include "host/services/dbqueuebroker.h"
#include "till/checks/check.h"
#include "till/failure.h"
#include "till/text.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// Takes messages instead of the queue.
class CatchingBroker : public DBQueueBroker
{
public:
    bool addToQueue(const QString& queueName, const QVariantMap& message, const QString&) override
    {
        queue = queueName;
        headers = message.value(u"headers"_s).toMap();
        return true;
    }

    QString queue;
    QVariantMap headers;
};

} // namespace

void confirmEmptyReturn(BasicLoyaltySystem& system)
{
    const Check check = Check::create(EDocumentType::ReturnBySale, 0, {});
    check.document->addCardRecord(Check::newCardRecord(QString(), system.getLoyaltySystemType()));
    system.setDocument(check.document);
    system.commit(check.document);
    system.rollback(check.document);
    system.setDocument({});
}

Credentials Credentials::of(BasicLoyaltySystem& system)
{
    CatchingBroker broker;
    const QScopedValueRollback<DBQueueBroker*> inPlace(Singleton<DBQueueBroker>::instance, &broker);
    confirmEmptyReturn(system);
    const QString authorization = broker.headers.value(u"Authorization"_s).toString();
    if (authorization.isEmpty()) {
        throw Failure(Text::tr("The loyalty system has no credentials; write user, password and "
                               "apikey into the configuration."));
    }
    return {broker.queue, authorization};
}

} // namespace till
