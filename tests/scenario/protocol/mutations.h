// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace tests {

/// A copy of a document in which one thing was changed.
struct Mutation
{
    enum class Kind
    {
        Removed,    ///< the element is gone
        Doubled,    ///< the element stands twice
        Renamed,    ///< the element has another name
        Swapped,    ///< the element has changed places with the next one, which has another name
        Extended,   ///< the element holds an unknown element more
        Attributed, ///< the element has an attribute
        Filled,     ///< the element, which holds elements, holds text beside them
        Changed,    ///< the element's text is one that it must not have
    };

    Kind kind;
    QString path; ///< of the element, as in "items/RawItem/total"
    QString text; ///< for Changed: the new text
    QByteArray document;

    /// For messages.
    [[nodiscard]] QString name() const;
};

/// One mutation of every kind for every element of a document, and several texts for every element
/// that holds text and whose texts are not free.
std::vector<Mutation> mutationsOf(const QByteArray& document);

} // namespace tests
