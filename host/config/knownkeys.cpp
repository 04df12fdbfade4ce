// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/knownkeys.h"

#include "host/config/hostkeys_p.h"
#include "host/config/keysheet.h"

#include <algorithm>
#include <mutex>

namespace poshost {

using namespace Qt::StringLiterals;

namespace knownkeys {

namespace {

struct Owner
{
    QString name;
    QList<ConfigKey> keys;
};

/// A plug-in's keys come first: of all they are the ones that a shop writes.
struct Registry
{
    std::mutex mutex; // guards what follows
    QList<Owner> owners{{keysheet::owner(), {}}, {u"host"_s, hostKeys()}};
};

Registry& registry()
{
    static Registry all;
    return all;
}

template <typename Condition>
std::optional<ConfigKey> firstOf(const QList<ConfigKey>& keys, Condition fits)
{
    const auto found = std::find_if(keys.cbegin(), keys.cend(), fits);
    return found == keys.cend() ? std::nullopt : std::optional(*found);
}

} // namespace

void registerKeys(const QString& owner, const QList<ConfigKey>& keys)
{
    Registry& known = registry();
    const std::lock_guard guard(known.mutex);
    const auto before = std::find_if(known.owners.begin(), known.owners.end(),
                                     [&owner](const Owner& each) { return each.name == owner; });
    if (before == known.owners.end()) {
        known.owners.append({owner, keys});
    } else {
        before->keys = keys;
    }
}

QList<ConfigKey> all()
{
    Registry& known = registry();
    const std::lock_guard guard(known.mutex);
    QList<ConfigKey> keys;
    for (const Owner& owner : std::as_const(known.owners)) {
        keys.append(owner.keys);
    }
    return keys;
}

QList<ConfigKey> of(const QString& owner)
{
    Registry& known = registry();
    const std::lock_guard guard(known.mutex);
    for (const Owner& each : std::as_const(known.owners)) {
        if (each.name == owner) {
            return each.keys;
        }
    }
    return {};
}

std::optional<ConfigKey> find(const QString& table, const QString& key)
{
    return firstOf(
        all(), [&](const ConfigKey& known) { return known.table == table && known.key == key; });
}

std::optional<ConfigKey> find(ConfigKey::Use use)
{
    return firstOf(all(), [use](const ConfigKey& known) { return known.use == use; });
}

QStringList tables()
{
    QStringList names;
    for (const ConfigKey& known : all()) {
        names.append(known.table);
    }
    names.removeDuplicates();
    return names;
}

QStringList keysOf(const QString& table)
{
    QStringList names;
    for (const ConfigKey& known : all()) {
        if (known.table == table) {
            names.append(known.key);
        }
    }
    return names;
}

} // namespace knownkeys

} // namespace poshost
