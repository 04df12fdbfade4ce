// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

// The same for all tests; those of other files see it as well.
#include "contract/printers.h"
