// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/config/configkey.h"

#include <QString>
#include <QStringList>

/// What the doctor says of a configuration key, from its sheet.
namespace till::doctor::keylines {

/// The identifier of the key's check: "config.TABLE.KEY".
QString idOf(const poshost::ConfigKey& key);
/// Whether a host is this machine.
bool isHere(const QString& host);
/// The checks before one that needs the key with that use: that of the key, or where no sheet names
/// one, that of the plug-in's.
QStringList needed(poshost::ConfigKey::Use use);
/// Why nothing is checked where no sheet names a key with the use in question.
QString nobodyKnows();
/// What holds where an optional key is not set, for people.
QString notSet(const poshost::ConfigKey& key);

} // namespace till::doctor::keylines
