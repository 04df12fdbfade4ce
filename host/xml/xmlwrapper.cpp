// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/xml/xmlwrapper.h"

#include <QDomDocument>

namespace {

void collect(const QDomElement& parent, const QList<QString>& path, qsizetype level,
             QList<QDomElement>& found)
{
    const QString& name = path.at(level);
    for (QDomElement child = parent.firstChildElement(name); !child.isNull();
         child = child.nextSiblingElement(name)) {
        if (level + 1 == path.size()) {
            found.append(child);
        } else {
            collect(child, path, level + 1, found);
        }
    }
}

} // namespace

XmlWrapper::XmlWrapper() = default;

XmlWrapper::~XmlWrapper() = default;

QList<QDomElement> XmlWrapper::extractElements(const QDomElement& parent,
                                               const QList<QString>& path) const
{
    QList<QDomElement> found;
    if (!path.isEmpty()) {
        collect(parent, path, 0, found);
    }
    return found;
}

QDomElement XmlWrapper::extractElement(const QDomElement& parent, const QList<QString>& path,
                                       const OnMissing& onMissing) const
{
    QDomElement element = parent;
    for (const QString& name : path) {
        element = element.firstChildElement(name);
        if (element.isNull()) {
            onMissing(name);
            return {};
        }
    }
    return element;
}

void XmlWrapper::insertElement(QDomElement& parent, const QList<QString>& path,
                               const QDomNode& node, Operation) const
{
    // Only makes the elements. The parent's own document may be gone, and one made each time costs
    // more than the elements.
    static thread_local QDomDocument maker;
    QDomElement element = parent;
    bool isNew = false; // nothing has to be looked for below a new element
    for (const QString& name : path) {
        QDomElement child = isNew ? QDomElement() : element.firstChildElement(name);
        if (child.isNull()) {
            child = maker.createElement(name);
            element.appendChild(child);
            isNew = true;
        }
        element = child;
    }
    element.appendChild(node);
}
