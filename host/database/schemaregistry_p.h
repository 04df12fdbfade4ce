// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/schemastep.h"

namespace poshost {

/// The steps of one owner of tables.
struct OwnedSteps
{
    QString owner;
    QList<SchemaStep> steps;
};

/// What all owners have registered, in that order. Any thread.
QList<OwnedSteps> registeredSchema();

} // namespace poshost
