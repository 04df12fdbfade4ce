// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/config/configkey.h"
#include "host/hostexport.h"

#include <QList>
#include <QString>

namespace poshost {

/// The key sheet of a plug-in: a small TOML file beside it, "liborva.keys.toml" beside
/// "liborva.so", that says which keys of the configuration it reads. It is read without loading
/// the plug-in, so before the configuration is. A plug-in may come without: then nothing is known
/// of its keys, its secrets stand in the configuration itself, and no table is called unknown.
///
///     table = "Shop"                       # the table of all its keys
///
///     [[key]]
///     name = "timeout"
///     type = "number"                      # text, path, address, proxy, secret, number
///     about = "how long it waits"          # one sentence
///     sample = '10'                        # a value as it may stand in the configuration
///     default = 10                         # or without = "...", what holds without the key
///     unit = "seconds"
///     minimum = 0
///     required = false                     # true: the plug-in cannot work without it
///     mayBeEmpty = false
///     use = "timeout"                      # server, timeout, credential
///
/// name, type, about and sample must be there; what else stands in a sheet is for other readers.
namespace keysheet {

/// @return the owner of these keys in knownkeys
HOST_EXPORT QString owner();
/// Looks for the sheet beside a plug-in, or beside the file that a link to it leads to.
/// @param pluginFile path of the plug-in
/// @return path of the sheet; empty when there is none
HOST_EXPORT QString fileOf(const QString& pluginFile);
/// Reads a sheet. Waits for nobody.
/// @param fileName path of the sheet
/// @return its keys in their order
/// @throws BasicException "configError" naming the file and what is wrong with it
HOST_EXPORT QList<ConfigKey> read(const QString& fileName);
/// Registers the keys of a plug-in in the place of those of the plug-in before; none where it has
/// no sheet. To be called before the configuration is loaded.
/// @param pluginFile empty: there is no plug-in
/// @throws BasicException as read, or when it claims a table that has another owner; then no
/// plug-in's keys are known
HOST_EXPORT void registerPlugin(const QString& pluginFile);

} // namespace keysheet

} // namespace poshost
