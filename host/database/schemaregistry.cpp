// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/schemaregistry_p.h"

#include <algorithm>
#include <mutex>

namespace poshost {

namespace {

struct Registry
{
    std::mutex mutex; // guards what follows
    QList<OwnedSteps> owners;
};

Registry& registry()
{
    static Registry all;
    return all;
}

} // namespace

void registerSchema(const QString& owner, const QList<SchemaStep>& steps)
{
    Registry& all = registry();
    const std::lock_guard guard(all.mutex);
    const auto known =
        std::find_if(all.owners.begin(), all.owners.end(),
                     [&owner](const OwnedSteps& owned) { return owned.owner == owner; });
    if (known == all.owners.end()) {
        all.owners.append({owner, steps});
    } else {
        known->steps = steps;
    }
}

QList<OwnedSteps> registeredSchema()
{
    Registry& all = registry();
    const std::lock_guard guard(all.mutex);
    return all.owners;
}

} // namespace poshost
