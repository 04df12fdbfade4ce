// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/postgresbooks.h"
#include "store/client/postgresstore.h"

namespace orvastore {

/// What the loader asks the module for. What it makes stands in the library, where tests link it.
class StoreModule : public QObject, public StoreDriver
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.orva.StoreDriver/1")
    Q_INTERFACES(orvastore::StoreDriver)

public:
    QSharedPointer<StoreClient> makeClient() override
    {
        return QSharedPointer<PostgresStore>::create();
    }
    QSharedPointer<SharedBooks> makeBooks() override
    {
        return QSharedPointer<PostgresBooks>::create();
    }
};

} // namespace orvastore

#include "module.moc"
