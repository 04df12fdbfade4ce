// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QDomElement>
#include <QDomNode>
#include <QList>
#include <QString>

#include <functional>

/// Reads and fills XML documents by paths of element names. Holds no state. Time grows with the
/// number of siblings passed, never with its square.
class HOST_EXPORT XmlWrapper
{
public:
    /// What an insertion is for. Both create only what is missing of the path and join what is
    /// there.
    enum class Operation
    {
        Payment = 0,
        Award = 1,
    };
    using OnMissing = std::function<void(const QString&)>;

    XmlWrapper();
    virtual ~XmlWrapper();

    /// All elements reached by the path below the parent, in document order; every element of a
    /// matching name is followed at every level.
    virtual QList<QDomElement> extractElements(const QDomElement& parent,
                                               const QList<QString>& path) const;

    /// The first element at the path; at every level the first child of that name is taken. Where
    /// one is missing, onMissing is called once with the name that was not found and, when it
    /// returns, the result is a null element.
    virtual QDomElement extractElement(
        const QDomElement& parent, const QList<QString>& path,
        const OnMissing& onMissing = [](const QString&) {}) const;

    /// Walks the path below the parent, by first children as extractElement does, and attaches the
    /// node as last child of the path's last element. Each element that is missing is made as last
    /// child of the one before it.
    virtual void insertElement(QDomElement& parent, const QList<QString>& path,
                               const QDomNode& node, Operation operation) const;
};
