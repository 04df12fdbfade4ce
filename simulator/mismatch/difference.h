// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/amount.h"
#include "simulator/documents/element.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace simulator {

/// One field of a request that is not as it was expected.
struct Difference
{
    QString path;     ///< as in "items/RawItem[2]/total", counted from 1
    QString got;      ///< its text as it may be shown; empty where the field is missing
    QString expected; ///< the same of what it should be; empty where there should be none
    bool isMissing = false;
    bool isAdded = false;
    std::optional<Kopecks> tooMuch; ///< of money: got less expected

    /// One half sentence that begins with the path.
    [[nodiscard]] QString text() const;
};

/// What came of holding a document against another one.
struct Comparison
{
    std::vector<Difference> differences; ///< in the order of the document
    QStringList agreeing;                ///< the fields of the check that are the same, by name
    size_t agreeingLines = 0;
    size_t lines = 0;
};

/// Holds a request against the document that it should repeat: elements and texts. Lines are taken
/// in their order, and where there are more or fewer of them by their identifiers.
/// isWhole: false passes over what only an answer has (owner, awards, messages)
Comparison compared(const Element& request, const Element& expected, bool isWhole);

/// A difference of two amounts of money.
Difference moneyDifference(const QString& path, Kopecks got, Kopecks expected);

} // namespace simulator
