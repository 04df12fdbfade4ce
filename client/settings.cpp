// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Construction, the settings and the last response.

#include "client/defaulttimeout.h"
#include "client/interface.h"
#include "host/services/restclient.h"
#include "host/xml/xmlwrapper.h"

#include <QCryptographicHash>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

using namespace Qt::StringLiterals;

namespace orva {

Interface::Interface()
    : timeout(defaultTimeoutSeconds), xmlWrapper(QSharedPointer<XmlWrapper>::create()),
      logger(Log4Qt::LogManager::logger(u"orva"_s))
{
    headers.insert(u"Content-Type"_s, u"application/xml"_s);
    headers.insert(u"Accept"_s, u"application/xml"_s);
}

Interface::~Interface() = default;

void Interface::setUrl(const QString& url)
{
    logger->info(u"Адрес сервера: %1"_s, url);
    serverUrl = QUrl(url);
}

void Interface::setCashData(const QString& merchant, const QString& cashDesk)
{
    // The wording calls the first value the cash desk's code and the second the shop's, although
    // they are the other way round: the line's text is fixed and stays so.
    logger->info(u"Код кассы в системе лояльности: %1, код магазина в системе лояльности: %2"_s,
                 merchant, cashDesk);
    merchantId = merchant;
    pos = cashDesk;
}

void Interface::setTimeout(int seconds)
{
    timeout = seconds;
}

void Interface::setAuthData(const QString& user, const QString& password, const QString& apiKey)
{
    logger->debug(u"Установка данных авторизации для пользователя %1"_s, user);
    const QByteArray hash =
        QCryptographicHash::hash(password.toLatin1(), QCryptographicHash::Sha1).toHex();
    const QString passwordHash = QString::fromLatin1(hash);
    // One after another, which is meant: a "%2" in the user name takes the hash.
    const QString credentials =
        u"%1:%2:%3"_s.arg(user).arg(passwordHash).arg(apiKey); // clazy:exclude=qstring-arg
    const QByteArray encoded = credentials.toLocal8Bit().toBase64();
    headers.insert(u"Authorization"_s, u"Basic %1"_s.arg(QString::fromLatin1(encoded)));
}

QDomDocument Interface::getLastResponse() const
{
    return lastResponse;
}

void Interface::setLastResponse(const QDomDocument& doc)
{
    lastResponse = doc;
}

QUrl Interface::getUrl(const QString& relativePath) const
{
    QUrl url = serverUrl;
    // No "/" in between: the configured address ends with one.
    url.setPath(url.path(QUrl::FullyDecoded) + relativePath, QUrl::DecodedMode);
    return url;
}

} // namespace orva
