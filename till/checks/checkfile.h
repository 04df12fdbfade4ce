// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/line.h"

#include <QList>
#include <QString>

#include <optional>

namespace till {

/// A check as a person writes it down, in TOML.
///
/// A sale: type = "sale"; number (optional, from 1), card (optional); for every line a [[line]]
/// with the fields that linefields says a file has (till/README.md shows them). A return: type =
/// "return"; sale, the returned sale's identifier or number, or "last"; number (optional); for
/// every line a [[line]] with the position of the sale's line and the returned quantity. Amounts
/// and quantities are numbers or texts.
struct CheckFile
{
    enum class Type
    {
        Sale,
        Return,
    };

    Type type = Type::Sale;
    std::optional<int> number;
    /// The customer's card; empty for a sale without one.
    QString card;
    /// What a return says about its sale: its identifier, its number, or "last".
    QString sale;
    /// On a sale numbered from 1; on a return only the position and the returned quantity are set.
    QList<Line> lines;

    /// Reads a file. @throws Failure (Usage) that names file, line and field.
    static CheckFile read(const QString& fileName);
};

} // namespace till
