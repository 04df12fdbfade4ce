// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <stdexcept>

namespace year {

/// Points that are not where they should be, or a till or a server that contradicts what it has
/// done: one sentence with the card and both sums.
class Violation : public std::runtime_error
{
public:
    explicit Violation(const QString& what) : std::runtime_error(what.toStdString()) {}

    QString text() const { return QString::fromUtf8(what()); }
};

} // namespace year
