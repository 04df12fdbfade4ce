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
        Payment = 0, ///< of a payment
        Award = 1,   ///< of what a goods line was granted
    };
    /// Hears the name of the first element of a path that is missing. May throw: that is how a
    /// reader makes an element compulsory.
    using OnMissing = std::function<void(const QString&)>;

    XmlWrapper();
    virtual ~XmlWrapper();

    /// All elements reached by the path below the parent; every element of a matching name is
    /// followed at every level.
    /// @param parent where the path begins; a null one has nothing below it
    /// @param path names, without the parent's own; an empty path leads nowhere
    /// @return the elements in document order, nodes of the parent's document
    virtual QList<QDomElement> extractElements(const QDomElement& parent,
                                               const QList<QString>& path) const;

    /// The first element at the path; at every level the first child of that name is taken. Where
    /// one is missing, onMissing is called once with the name that was not found and, when it
    /// returns, the result is a null element.
    /// @param parent where the path begins
    /// @param path names, without the parent's own; an empty path leads to the parent
    /// @param onMissing by default does nothing
    /// @return the element, a node of the parent's document
    virtual QDomElement extractElement(
        const QDomElement& parent, const QList<QString>& path,
        const OnMissing& onMissing = [](const QString&) {}) const;

    /// Walks the path below the parent, by first children as extractElement does, and attaches the
    /// node as last child of the path's last element. Each element that is missing is made as last
    /// child of the one before it.
    /// @param parent where the path begins
    /// @param path names, without the parent's own; an empty path leads to the parent
    /// @param node is taken out of where it was
    /// @param operation what is inserted; makes no difference here
    virtual void insertElement(QDomElement& parent, const QList<QString>& path,
                               const QDomNode& node, Operation operation) const;
};
