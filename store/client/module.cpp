// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/postgresstore.h"

namespace orvastore {

/// What the loader asks the module for. The class itself stands in the library, where tests link
/// it.
class StoreModule : public PostgresStore
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.orva.StoreClient/1")
    Q_INTERFACES(orvastore::StoreClient)
};

} // namespace orvastore

#include "module.moc"
