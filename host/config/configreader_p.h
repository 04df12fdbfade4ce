// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/configfinding.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>

namespace poshost {

/// What stands in a configuration file: "Table:key" -> value, and everything that is wrong with it
/// in the order in which it was met. A key with an error has no value.
class ConfigReader
{
public:
    /// Reads the file; never throws.
    explicit ConfigReader(const QString& fileName);

    QHash<QString, QVariant> values;
    QList<ConfigFinding> findings;
};

} // namespace poshost
