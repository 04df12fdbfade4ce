// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QCoreApplication>

namespace simulator {

/// The translation context of the simulator: Text::tr("…") for what it tells the person at its
/// terminal. What it answers to a till, and its log of that, has one language.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Simulator)
};

} // namespace simulator
