// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/tmcunit.h"

TmcUnit::TmcUnit(const QString& unitName, bool isFraction) : name(unitName), fractional(isFraction)
{}
