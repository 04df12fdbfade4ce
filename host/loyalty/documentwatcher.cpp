// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/documentwatcher.h"

DocumentWatcher::DocumentWatcher() = default;

DocumentWatcher::~DocumentWatcher() = default;
