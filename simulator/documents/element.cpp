// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/element.h"

#include <algorithm>

namespace simulator {

const Element* Element::child(QLatin1StringView childName) const
{
    const auto found = std::find_if(children.begin(), children.end(), [&](const Element& element) {
        return element.name == childName;
    });
    return found == children.end() ? nullptr : &*found;
}

std::vector<const Element*> Element::all(std::initializer_list<QLatin1StringView> path) const
{
    std::vector<const Element*> level{this};
    for (const QLatin1StringView step : path) {
        std::vector<const Element*> next;
        for (const Element* parent : level) {
            for (const Element& element : parent->children) {
                if (element.name == step) {
                    next.push_back(&element);
                }
            }
        }
        level = std::move(next);
    }
    return level;
}

Element& Element::append(QLatin1StringView childName, const QString& childText)
{
    return children.emplace_back(QString(childName), childText);
}

void Element::remove(QLatin1StringView childName)
{
    std::erase_if(children, [&](const Element& element) { return element.name == childName; });
}

} // namespace simulator
