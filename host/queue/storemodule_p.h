// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"
#include "host/core/mockfactory.h"
#include "host/hostexport.h"
#include "store/storeclient.h"

#include <QSharedPointer>
#include <QString>

namespace poshost {

/// The module that knows how to reach a store. It is loaded only where a store is configured, so
/// that a till without one needs no database library.
class HOST_EXPORT StoreModule
{
public:
    StoreModule() = default;
    virtual ~StoreModule();
    StoreModule(const StoreModule&) = delete;
    StoreModule& operator=(const StoreModule&) = delete;

    /// Loads the module's file.
    /// @param file its path
    /// @param problem receives why it cannot be loaded, a sentence with the path and the package
    /// @return what makes the ways to the store, in the process to its end; null when it cannot
    virtual QSharedPointer<orvastore::StoreDriver> load(const QString& file, Message& problem);
};

} // namespace poshost

extern template class HOST_EXPORT MockFactory<poshost::StoreModule>;
