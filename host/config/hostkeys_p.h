// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/config/configkey.h"

#include <QList>

namespace poshost {

/// How long delivered messages stay listed where the configuration says nothing else.
inline constexpr int defaultKeepDays = 30;

/// The keys that the host itself reads: of its transport and its queue.
QList<ConfigKey> hostKeys();

} // namespace poshost
