// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/protocol/schemacheck.h"

namespace tests {

/// Documents of the tests that do not fit the schemas on purpose: those in a file that begin with a
/// text.
struct Deviation
{
    QString file;
    QString begins;
    QString reason;

    [[nodiscard]] bool covers(const WireDocument& document) const;
    /// For messages.
    [[nodiscard]] QString name() const { return file + QStringLiteral(": ") + begins; }
};

/// The list in deviations.toml.
std::vector<Deviation> deviations();

} // namespace tests
