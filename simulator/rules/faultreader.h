// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/rules/faultrule.h"

namespace simulator {

class TableReader;

/// Reads one [[fault]] table. seed: where the table has none of its own.
/// Throws ConfigError on what is not understood.
FaultRule readFault(const TableReader& table, quint64 seed);

/// The same from a JSON object with the keys of such a table; name stands for it in messages.
FaultRule readFaultJson(const QByteArray& text, const QString& name);

} // namespace simulator
