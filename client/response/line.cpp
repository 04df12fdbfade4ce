// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/response/line.h"

#include "client/elements.h"
#include "client/response/number.h"
#include "host/xml/xmlwrapper.h"

namespace orva {

namespace {

/// The element's text. Nearly always that is one text node, whose content need not be copied.
QString textOf(const QDomElement& element)
{
    const QDomNode only = element.firstChild();
    return only.isText() && only.nextSibling().isNull() ? only.nodeValue() : element.text();
}

} // namespace

QList<QDomElement> answerLines(const QSharedPointer<XmlWrapper>& xml, const QDomElement& root)
{
    static const QList<QString> path{element::items(), element::rawItem()};
    return xml->extractElements(root, path);
}

int linePosition(const QSharedPointer<XmlWrapper>& xml, const QDomElement& line)
{
    static const QList<QString> path{element::id()};
    return textOf(xml->extractElement(line, path)).toInt();
}

QList<QString> awardPath(const QString& name)
{
    return {element::awards(), element::rawItemAwards(), name};
}

double lineAmount(const QSharedPointer<XmlWrapper>& xml, const QDomElement& line,
                  const QList<QString>& path)
{
    return toNumber(textOf(xml->extractElement(line, path)));
}

} // namespace orva
