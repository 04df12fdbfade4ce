// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace tests {

/// The elements of a schema in protocol/schema as a table in Markdown: path below the root, how
/// often, what the text looks like, what it means. without: a schema whose paths are left out;
/// empty for none
QString schemaTable(const QString& schema, const QString& without = {});

} // namespace tests
