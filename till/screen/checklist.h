// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <functional>

namespace till {

class CheckStore;

/// The list of checks, the newest first, in parts: however many there are, they take no memory.
namespace checklist {

/// How many there are on a page.
inline constexpr int pageLength = 50;

/// Which checks are listed.
struct Section
{
    /// Identifier of the check to go on behind; empty: from the newest.
    QString before;
    /// At most so many; 0: all.
    int most = pageLength;
};

/// Takes each part when it is made.
using Write = std::function<void(const QString& part)>;

/// As people read it. @param width how many characters fit on a line
void writeTable(CheckStore& store, const Section& section, int width, const Write& write);
/// An array with an object for each check.
void writeJson(CheckStore& store, const Section& section, const Write& write);

} // namespace checklist
} // namespace till
