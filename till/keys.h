// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/config/configkey.h"

#include <QList>

namespace till {

/// What the till is called where the configuration does not say.
inline constexpr char16_t defaultTillName[] = u"till";

/// How long a closed check stays in the database, and how long its goods are taken back.
inline constexpr int defaultKeepChecksDays = 400;
inline constexpr int defaultReturnDays = 365;

/// The keys that the till reads: its tables [till] and [recording].
QList<poshost::ConfigKey> tillKeys();

} // namespace till
