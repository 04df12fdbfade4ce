// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/config/configkey.h"
#include "host/hostexport.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace poshost {

/// What may stand in the configuration: the host's own keys and those that their owners have
/// registered. Any thread.
namespace knownkeys {

/// Makes the keys of an owner known to every configuration that is loaded from now on; those that
/// it registered before are forgotten. The keys of a table have one owner.
/// @param owner a name of its own, such as "till"; a plug-in's keys are those of keysheet.h
/// @param keys none: the owner is forgotten
HOST_EXPORT void registerKeys(const QString& owner, const QList<ConfigKey>& keys);
/// @return all keys: the plug-in's, the host's, then the others' in the order of their owners'
/// registration
HOST_EXPORT QList<ConfigKey> all();
/// @param owner the name that it registered under
/// @return its keys; none when it has registered none
HOST_EXPORT QList<ConfigKey> of(const QString& owner);
/// Looks a key up.
/// @param table name of the table, in its own case
/// @param key name of the key in it
/// @return what the key may hold; nothing for one that nobody reads
HOST_EXPORT std::optional<ConfigKey> find(const QString& table, const QString& key);
/// @param use what the key is for
/// @return the first key with that use, or nothing
HOST_EXPORT std::optional<ConfigKey> find(ConfigKey::Use use);
/// @return the names of all tables, in the order in which they are documented
HOST_EXPORT QStringList tables();
/// @param table name of a table
/// @return the names of its keys, in the order in which they are documented; none for an unknown
/// table
HOST_EXPORT QStringList keysOf(const QString& table);

} // namespace knownkeys

} // namespace poshost
