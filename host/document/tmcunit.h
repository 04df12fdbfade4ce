// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QString>

/// The unit that goods are measured in.
class HOST_EXPORT TmcUnit
{
public:
    /// A unit; by default pieces without a name.
    /// @param name the short name printed beside a quantity
    /// @param fractional whether parts of it can be sold
    explicit TmcUnit(const QString& name = QString(), bool fractional = false);

    /// The short name printed beside a quantity.
    QString getName() const { return name; }
    /// True for a unit measured in fractions (weight), false for pieces.
    bool isFractional() const { return fractional; }

private:
    QString name;
    bool fractional;
};
