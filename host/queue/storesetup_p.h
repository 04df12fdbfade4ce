// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"
#include "store/storeclient.h"

#include <QSharedPointer>
#include <QString>
#include <optional>

namespace poshost {

/// What the configuration says in [store] of the store that closed checks are handed over to.
struct StoreSetup
{
    orvastore::StoreSettings settings; ///< where it is
    QString shop;                      ///< whose checks these are
    QString module;                    ///< the file that knows how to reach it
    /// How old a message is when the till delivers it itself while the store is away; nothing: it
    /// waits for the store.
    std::optional<qint64> fallbackMilliseconds;
    Message problem; ///< why the store cannot be used as configured; empty when it can

    /// @return nothing when no store is configured
    static std::optional<StoreSetup> configured();

    /// Loads the module.
    /// @param problem receives why it cannot be loaded, a sentence
    /// @return null when it cannot
    QSharedPointer<orvastore::StoreClient> client(Message& problem) const;
};

} // namespace poshost
