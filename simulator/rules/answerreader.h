// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/rules/cannedanswer.h"

#include <QDir>

namespace simulator {

class TableReader;

/// Reads one [[answer]] table of the rules. Throws ConfigError.
/// folder: where a file that the table names is looked up
/// files: the path of such a file is appended to it
CannedAnswer readAnswer(const TableReader& table, const QDir& folder, QStringList& files);

} // namespace simulator
