// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"
#include "store/sharedbooks.h"

#include <QString>
#include <QtGlobal>
#include <optional>

namespace poshost {

class Database;

/// What who keeps the checks still has to say to the store, beside handing them over: that an
/// abandoned return takes nothing, for instance. Done on the thread that delivers, before the next
/// hand-over, while no other process delivers the same file. Both throw BasicException
/// "databaseError".
struct StoreErrands
{
    /// @param database the file with the checks
    /// @return when the next one is due, in milliseconds since 1970; nothing when there is none.
    /// Does not block
    std::optional<qint64> (*nextDue)(Database& database) = nullptr;
    /// Does those that are due. Blocks for the store's time-outs.
    /// @param books the way to the store
    /// @param shop whose checks these are
    /// @return the first that was not Done, or Done; what is left is done by a later call
    orvastore::StoreResult (*run)(Database& database, orvastore::SharedBooks& books,
                                  const QString& shop) = nullptr;
};

/// Says what there is to do. To be called before the first Database is opened.
/// @param errands called on the thread that delivers; empty: there is nothing
HOST_EXPORT void registerStoreErrands(const StoreErrands& errands);

} // namespace poshost
