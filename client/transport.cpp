// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The exchange with the server.

#include "client/endpoint.h"
#include "client/exception.h"
#include "client/harmlessxml.h"
#include "client/interface.h"
#include "client/noconnectionexception.h"
#include "client/repeatedlines.h"
#include "client/required.h"
#include "host/services/restclient.h"

#include <log4qt/logger.h>

using namespace Qt::StringLiterals;

namespace orva {

QString endpointPath(Interface::RequestType type)
{
    const QString pattern = u"api/1.x/%1"_s;
    switch (type) {
    case Interface::RequestType::Precheck:
        return pattern.arg(u"precheck"_s);
    case Interface::RequestType::PaymentTry:
        return pattern.arg(u"paymenttry"_s);
    case Interface::RequestType::CheckConfirm:
        return pattern.arg(u"checkconfirm"_s);
    }
    return {};
}

namespace {

/// The server tells its own conditions by three statuses; no element of the answer is examined.
void throwOnStatus(int status)
{
    switch (status) {
    case 401:
        throw Exception(tr::Tr(u"orvaAuthorisationError"_s, u"Ошибка авторизации на сервере"_s),
                        QString());
    case 409:
        throw Exception(
            tr::Tr(u"orvaDuplicateCheckId"_s, u"Чек с таким идентификатором уже был обработан"_s),
            QString());
    case 424:
        throw Exception(tr::Tr(u"orvaDataIntegrityError"_s, u"Нарушение целостности данных"_s),
                        QString());
    default:
        break;
    }
}

} // namespace

void Interface::sendRequest(RequestType type, const QDomDocument& request)
{
    logger->info(u"Отправка запроса в систему лояльности"_s);
    const auto transport = MockFactory<RestClient>::create();
    transport->setTimeout(timeout);
    const QString path = endpointPath(type);
    if (path.isEmpty()) {
        throwNotFormed(QString());
    }
    const QUrl url = getUrl(path);
    transport->post(url, request.toByteArray(1), headers);
    // The status comes first: a refusal is told apart even when the transport reports it as well.
    throwOnStatus(transport->getHttpStatusCode());
    if (transport->getError() > 0) {
        logger->error(u"Ошибка при выполнении запроса: %1"_s, transport->getErrorText().ru());
        throw NoConnectionException(tr::Tr(u"requestNoConnection"_s, u"Нет связи с сервером"_s));
    }
    const QByteArray body = transport->getResponse();
    QString harm = harmInXml(body);
    if (harm.isEmpty()) {
        // Whatever the parser made of the body is the answer; the readers report what it lacks.
        lastResponse.setContent(body);
        harm = harmInLines(xmlWrapper, lastResponse.documentElement());
    }
    if (!harm.isEmpty()) {
        logger->error(u"Ответ сервера не разбирается: %1"_s, harm);
        lastResponse = QDomDocument();
    }
}

} // namespace orva
