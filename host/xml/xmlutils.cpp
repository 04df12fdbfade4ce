// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/xml/xmlutils.h"

namespace xmlutils {

QDomElement createTextElement(QDomDocument& document, const QString& name, const QString& text)
{
    QDomElement element = document.createElement(name);
    element.appendChild(document.createTextNode(text));
    return element;
}

} // namespace xmlutils
