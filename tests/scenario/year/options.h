// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/year/saboteur.h"

#include <QString>

namespace year {

/// What the command line says.
struct Options
{
    quint64 seed = 1;
    int days = 365;
    int tills = 3;
    int cards = 40;
    int eventsPerDay = 40;
    QString journal; ///< file for the journal; empty: it is not kept
    Plant plant = Plant::None;
    int plantAt = 25; ///< the confirmation at which it is planted
};

} // namespace year
