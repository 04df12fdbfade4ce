// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/schemastep.h"

namespace till {

/// The till's checks and settings in its database: the steps from an empty file to the tables that
/// CheckStore reads and writes.
QList<poshost::SchemaStep> checkSchema();

} // namespace till
