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
/// All keys: the plug-in's, the host's, then the others' in the order of their owners'
/// registration.
HOST_EXPORT QList<ConfigKey> all();
/// The keys of one owner.
HOST_EXPORT QList<ConfigKey> of(const QString& owner);
/// The known key, or nothing.
HOST_EXPORT std::optional<ConfigKey> find(const QString& table, const QString& key);
/// The first key with that use, or nothing.
HOST_EXPORT std::optional<ConfigKey> find(ConfigKey::Use use);
HOST_EXPORT QStringList tables();
HOST_EXPORT QStringList keysOf(const QString& table);

} // namespace knownkeys

} // namespace poshost
