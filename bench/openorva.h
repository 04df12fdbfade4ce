// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "plugin/orva.h"

namespace bench {

/// The plug-in's class with its state in reach.
class OpenOrva : public Orva
{
public:
    using Orva::bonusRecords;
    using Orva::interface;
};

} // namespace bench
