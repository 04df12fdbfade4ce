// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The request document of a check.

#include "client/elements.h"
#include "client/exception.h"
#include "client/interface.h"
#include "client/required.h"
#include "host/services/currenttime.h"
#include "host/xml/xmlutils.h"

using namespace Qt::StringLiterals;

namespace orva {

namespace {

QDateTime documentTime(const AbstractDocument& document)
{
    return document.hasDateTime() ? document.getDateTime()
                                  : MockFactory<CurrentTime>::create()->currentDateTime();
}

} // namespace

QDomDocument Interface::getRequestPayload(const QSharedPointer<AbstractDocument>& document,
                                          const QSharedPointer<DocumentCardRecord>& card) const
{
    requireDocument(document);
    QDomDocument request;
    QDomElement check = request.createElement(element::rawCheck());
    const auto append = [&request, &check](const QString& name, const QString& text) {
        check.appendChild(xmlutils::createTextElement(request, name, text));
    };

    append(element::id(), document->getDocumentId());
    append(element::number(), QString::number(document->getCheckNumber()));
    append(element::pos(), pos);
    append(element::date(), documentTime(*document).toString(u"yyyy-MM-dd hh:mm:ss"_s));

    int checkType = 0;
    switch (static_cast<EDocumentType>(document->getDocumentType())) {
    case EDocumentType::Sale:
        checkType = 1;
        break;
    case EDocumentType::ReturnBySale:
        append(element::originalId(), document->getSaleDocumentId());
        checkType = 2;
        break;
    default:
        throw Exception(tr::Tr(u"orvaInvalidCheckType"_s, u"Неподдерживаемый тип чека"_s),
                        QString());
    }
    append(element::checkType(), QString::number(checkType));
    append(element::merchantId(), merchantId);
    append(element::total(), QString::number(document->getCheckSum(), 'f', 2));

    const QList<QSharedPointer<GoodsItem>> goods = document->getGoodsItems();
    const auto type = static_cast<EDocumentType>(document->getDocumentType());
    check.appendChild(getRequestItems(goods, type));
    append(element::cardNumber(), requireCardRecord(card).getNumber().toString());

    request.appendChild(check);
    return request;
}

} // namespace orva
