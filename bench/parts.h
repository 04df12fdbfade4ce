// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace bench {

/// One reader or builder with a check of its own to work on.
class Part
{
public:
    virtual ~Part() = default;
    /// What is measured: once over all lines of the check.
    virtual void run() = 0;
    /// Takes back what run changed.
    virtual void reset() {}
};

struct NamedPart
{
    std::string name;
    std::function<std::unique_ptr<Part>(int lines)> make;
};

/// All readers and builders whose work grows with the check.
std::vector<NamedPart> allParts();

} // namespace bench
