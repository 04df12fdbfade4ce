// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/table.h"

namespace till {

using console::Table;

} // namespace till
