// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/storesetup.h"

#include <QSharedPointer>
#include <QString>

#include <chrono>
#include <memory>

namespace till {

/// The books that the tills of a shop share, as this till reaches them. One object belongs to one
/// thread; it connects with the first thing that it is asked, and each waits for the store no
/// longer than `[store] timeout`.
class SharedStore
{
public:
    /// @return null when no store is configured
    static std::unique_ptr<SharedStore> configured();
    explicit SharedStore(const poshost::StoreSetup& configuration);

    /// @throws Failure when the module that reaches the store cannot be loaded
    orvastore::SharedBooks& books();
    /// How long the store is waited for.
    std::chrono::milliseconds timeout() const
    {
        return std::chrono::seconds(setup.settings.timeoutSeconds);
    }
    /// Whose books they are.
    const QString& shop() const { return setup.shop; }
    /// The name under which the others know this till.
    const QString& till() const { return name; }

private:
    poshost::StoreSetup setup;
    QString name;
    QSharedPointer<orvastore::SharedBooks> opened;
};

} // namespace till
