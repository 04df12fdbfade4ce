// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The messages for the host's queue.

#include "client/endpoint.h"
#include "client/interface.h"
#include "client/required.h"

using namespace Qt::StringLiterals;

namespace orva {

QMap<QString, QVariant> Interface::createOfflineRequestMessage(const QDomDocument& request,
                                                               RequestType type) const
{
    QVariantMap messageHeaders;
    const QStringList names = headers.keys();
    for (const QString& name : names) {
        messageHeaders.insert(name, QVariant(headers.value(name)));
    }

    QVariantMap urls;
    const auto addUrl = [this, &urls](RequestType step) {
        urls.insert(QString::number(static_cast<int>(step)), getUrl(endpointPath(step)).toString());
    };
    if (type == RequestType::Precheck) {
        addUrl(RequestType::Precheck);
    }
    // Any other type, an unknown one too, still begins with the payment try.
    addUrl(RequestType::PaymentTry);
    addUrl(RequestType::CheckConfirm);

    QVariantMap message;
    message.insert(u"payload"_s, request.toString(1));
    message.insert(u"headers"_s, messageHeaders);
    message.insert(u"urls"_s, urls);
    return message;
}

QMap<QString, QVariant> Interface::getSaleRequest(const QSharedPointer<AbstractDocument>& document,
                                                  const QSharedPointer<DocumentCardRecord>&) const
{
    // The card record may be missing, since nothing of it is sent.
    AbstractDocument& check = requireDocument(document);
    // The copy shares its nodes: what is inserted also lands in the stored answer, which is meant.
    const QDomDocument answer = lastResponse;
    QDomElement root = answer.documentElement();
    insertUsedImpacts(root, check.getImpacts());
    insertPayments(root, check.getPaymentSum());
    return createOfflineRequestMessage(answer, RequestType::PaymentTry);
}

QMap<QString, QVariant>
Interface::getBackBySaleRequest(const QSharedPointer<AbstractDocument>& document,
                                const QSharedPointer<DocumentCardRecord>& cardRecord) const
{
    return createOfflineRequestMessage(getRequestPayload(document, cardRecord),
                                       RequestType::Precheck);
}

} // namespace orva
