// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"
#include "host/hostexport.h"
#include "store/sharedbooks.h"

#include <QSharedPointer>
#include <QString>
#include <optional>

namespace poshost {

/// What the configuration says in [store] of the store that closed checks are handed over to.
struct HOST_EXPORT StoreSetup
{
    orvastore::StoreSettings settings; ///< where it is
    QString shop;                      ///< whose checks these are
    QString module;                    ///< the file that knows how to reach it
    /// How old a message is when the till delivers it itself while the store is away; nothing: it
    /// waits for the store.
    std::optional<qint64> fallbackMilliseconds;
    Message problem; ///< why the store cannot be used as configured; empty when it can

    /// Any thread, does not block.
    /// @return nothing when no store is configured
    static std::optional<StoreSetup> configured();

    /// Loads the module and makes a way to hand over, opened with these settings. Any thread.
    /// @param trouble receives why it cannot be loaded, a sentence
    /// @return null when it cannot
    QSharedPointer<orvastore::StoreClient> client(Message& trouble) const;
    /// The same for what the tills of the shop share beside that.
    /// @param trouble receives why it cannot be loaded, a sentence
    /// @return null when it cannot
    QSharedPointer<orvastore::SharedBooks> books(Message& trouble) const;
    /// Loads the module. Any thread.
    /// @param trouble receives why it cannot be loaded, a sentence
    /// @return what makes both; null when it cannot be loaded
    QSharedPointer<orvastore::StoreDriver> driver(Message& trouble) const;
};

} // namespace poshost
