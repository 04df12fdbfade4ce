// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/response/line.h"

#include "client/elements.h"
#include "host/xml/xmlwrapper.h"

namespace orva {

QList<QDomElement> answerLines(const XmlWrapper& xml, const QDomElement& root)
{
    static const QList<QString> path{element::items(), element::rawItem()};
    return xml.extractElements(root, path);
}

int linePosition(const XmlWrapper& xml, const QDomElement& line)
{
    static const QList<QString> path{element::id()};
    return xml.extractElement(line, path).text().toInt();
}

double lineAward(const XmlWrapper& xml, const QDomElement& line, const QString& name)
{
    return xml.extractElement(line, {element::awards(), element::rawItemAwards(), name})
        .text()
        .toDouble();
}

} // namespace orva
