// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <random>

class QDomDocument;
class QDomElement;

/// Changes XML as a tree: Qt itself is not instrumented, so bytes changed blindly hardly ever get
/// past its parser.
class TreeMutator
{
public:
    /// @param elementNames names that mean something to the reader under test
    explicit TreeMutator(const QStringList& elementNames) : names(elementNames) {}

    /// Changes the data in place by a few random steps; the same seed does the same. What is no XML
    /// becomes a small document. @return the new length, at most maximum; 0 when it would be longer
    size_t mutate(std::uint8_t* data, size_t size, size_t maximum, unsigned seed);

private:
    using Random = std::mt19937;

    void step(QDomDocument& document, Random& random) const;
    void changeElement(QDomDocument& document, QDomElement element, Random& random) const;
    void add(QDomDocument& document, QDomElement& parent, Random& random) const;
    void retext(QDomDocument& document, QDomElement& element, Random& random) const;
    void nest(QDomDocument& document, QDomElement& element, Random& random) const;

    const QStringList names;
};
