// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/config/configkey.h"

#include <QList>

namespace poshost {

/// How long delivered messages stay listed where the configuration says nothing else.
inline constexpr int defaultKeepDays = 30;

/// How long a store is waited for.
inline constexpr int defaultStoreSeconds = 2;
/// How old a message is when it no longer waits for a store that is away, where that is wished.
inline constexpr int defaultFallbackSeconds = 300;

/// The keys that the host itself reads: of its transport, its queue and its store.
QList<ConfigKey> hostKeys();

} // namespace poshost
