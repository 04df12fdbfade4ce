// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/schemastep.h"

namespace poshost {

/// The outgoing queue's tables. Times are milliseconds since 1970 in UTC.
QList<SchemaStep> queueSchema();

} // namespace poshost
