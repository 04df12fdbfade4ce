// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QDomDocument>

#include <gtest/gtest.h>

namespace tests {

/// What a document would cost whoever writes it.
struct DomSize
{
    int levels = 0;
    /// Of the element that has most.
    int attributes = 0;
    /// Escapes times length, over all texts and attribute values.
    qint64 escapeMoves = 0;
    int nodes = 0;
    int elements = 0;
    bool hasDeclarations = false;
};

/// Walks without recursion, as the document may be too deep for it.
DomSize sizeOf(const QDomDocument& document);

/// Whether the document stays within every limit that texts are refused for.
::testing::AssertionResult isWithinLimits(const QDomDocument& document);

/// The last response of a client after the body came as an answer.
QDomDocument received(const QByteArray& body);

} // namespace tests
