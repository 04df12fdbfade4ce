// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Client, balance and points.

#include "host/document/client.h"

#include "client/elements.h"
#include "client/exception.h"
#include "client/interface.h"
#include "host/xml/xmlwrapper.h"

using namespace Qt::StringLiterals;

namespace orva {

QSharedPointer<Client> Interface::getClient(const QDomElement& root) const
{
    const auto text = [this, &root](const QString& field) {
        return xmlWrapper
            ->extractElement(root, {element::client(), element::rawCheckClient(), field})
            .text();
    };
    const QString name = text(element::name());
    const QString surname = text(element::surname());
    const auto client = QSharedPointer<Client>::create();
    // One after another, with the blank also when a part is empty.
    client->setName(u"%1 %2"_s.arg(name).arg(surname)); // clazy:exclude=qstring-arg
    return client;
}

double Interface::getBalance(const QDomElement& root) const
{
    static const QList<QString> path{element::client(), element::rawCheckClient(),
                                     element::account(), element::rawCheckAccount(),
                                     element::balance()};
    return xmlWrapper->extractElement(root, path, throwIfNoField).text().toDouble();
}

double Interface::getPointsForSpend(const QDomElement& root) const
{
    static const QList<QString> path{element::awards(), element::rawCheckAwards(),
                                     element::allowBonus()};
    return xmlWrapper->extractElement(root, path).text().toDouble();
}

double Interface::getPointsForEarn(const QDomElement& root) const
{
    static const QList<QString> path{element::awards(), element::rawCheckAwards(),
                                     element::awardBonus()};
    return xmlWrapper->extractElement(root, path).text().toDouble();
}

void Interface::throwIfNoField(const QString& field)
{
    throw Exception(
        tr::Tr(u"requestIncorrectAnswer"_s, u"Некорректный ответ от сервера"_s),
        u"Ошибка при разборе ответа от сервера. Отсутствует обязательное поле: %1"_s.arg(field));
}

} // namespace orva
