// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/element.h"

#include <QRegularExpression>

#include <optional>

namespace simulator {

/// What a text must look like.
struct TextForm
{
    QRegularExpression whole; ///< as wholeText makes it
    const char* expected;     ///< in words, as in "an amount such as 12.50"
    bool isTrimmed;           ///< blanks around it are of no account
    bool isInt;               ///< it must fit 32 bits
};

/// A regular expression for a whole text.
QRegularExpression wholeText(QLatin1StringView pattern);

/// What an element must hold: text, or elements.
struct ElementForm
{
    enum class Order
    {
        Free,
        AsListed
    };
    enum class Occurs
    {
        Once,
        AtMostOnce,
        AnyTimes
    };
    struct Child
    {
        QLatin1StringView name;
        const ElementForm* form = nullptr;
        Occurs occurs = Occurs::Once;
    };

    const TextForm* text = nullptr; ///< null where it holds elements
    std::vector<Child> children;
    Order order = Order::AsListed;
    bool mayBeEmpty = true; ///< whether there may be no element at all
};

/// The first thing in which an element differs from its form, as one sentence that begins with the
/// path of the element in question; nothing when it fits.
/// path: the element's own path with "/" behind it, empty for the root.
std::optional<QString> formObjection(const Element& element, const ElementForm& form,
                                     const QString& path = {});

} // namespace simulator
