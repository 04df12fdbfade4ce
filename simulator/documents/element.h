// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <initializer_list>
#include <vector>

namespace simulator {

/// An XML element as this wire format uses it: text or children, and no attributes.
class Element
{
public:
    Element() = default;
    explicit Element(const QString& elementName, const QString& elementText = {})
        : name(elementName), text(elementText)
    {}

    /// The first child of that name, or null.
    [[nodiscard]] const Element* child(QLatin1StringView childName) const;

    /// All elements at a path of names below this one, in document order.
    [[nodiscard]] std::vector<const Element*>
    all(std::initializer_list<QLatin1StringView> path) const;

    /// Appends a child and returns it; the reference holds until the next child is appended.
    Element& append(QLatin1StringView childName, const QString& childText = {});

    /// Removes all children of that name.
    void remove(QLatin1StringView childName);

    QString name;
    QString text; ///< empty where there are children
    std::vector<Element> children;
    QString dropped; ///< what was read and is not kept, as "an attribute"; empty for nothing
};

} // namespace simulator
