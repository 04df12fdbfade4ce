// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/config/configkey.h"

#include <QList>

namespace till {

/// What the till is called where the configuration does not say.
inline constexpr char16_t defaultTillName[] = u"till";

/// What is sold to a server that is tried where the configuration does not say.
inline constexpr char16_t defaultTriedGoods[] = u"1001,1002,1009";

/// How long a closed check stays in the database, and how long its goods are taken back.
inline constexpr int defaultKeepChecksDays = 400;
inline constexpr int defaultReturnDays = 365;

/// The keys that the till reads: its tables [till], [recording] and [verify].
QList<poshost::ConfigKey> tillKeys();

} // namespace till
