// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"
#include "host/hostexport.h"

/// Whether closed checks are handed over to a store, as the configuration says.
namespace poshost::storestate {

/// Any thread, does not block.
/// @return whether a store is configured
HOST_EXPORT bool isConfigured();

/// Looks whether the configured store can be used at all: its settings and the module that reaches
/// it, which is loaded for it. Asks no server.
/// @return what is wrong and what to do, a sentence; empty when nothing is, or no store is
/// configured
HOST_EXPORT Message problem();

} // namespace poshost::storestate
