// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/amount.h"

#include <QString>

namespace simulator {

/// A loyalty card and its owner.
struct Card
{
    QString number;
    QString name;
    QString surname;
    Kopecks opening = 0; ///< the balance that the card begins with
};

} // namespace simulator
