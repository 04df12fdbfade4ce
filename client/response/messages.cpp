// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The texts for one channel.

#include "client/elements.h"
#include "client/interface.h"
#include "host/xml/xmlwrapper.h"

namespace orva {

QStringList Interface::getMessages(const QDomElement& root, const QString& channel) const
{
    static const QList<QString> messagesPath{element::informing(), element::rawCheckInforming()};
    static const QList<QString> channelPath{element::communicationChannel()};
    static const QList<QString> infoPath{element::info()};
    QStringList texts;
    const QList<QDomElement> messages = xmlWrapper->extractElements(root, messagesPath);
    for (const QDomElement& message : messages) {
        if (xmlWrapper->extractElement(message, channelPath).text() == channel) {
            texts.append(xmlWrapper->extractElement(message, infoPath).text());
        }
    }
    return texts;
}

} // namespace orva
