// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/loyalty/basicloyaltysystem.h"

#include <QObject>
#include <QPluginLoader>

namespace bench {

/// The built plug-in, loaded and initialised as a till does it.
class LoadedPlugin
{
public:
    /// @throws std::runtime_error when a step fails
    LoadedPlugin();
    ~LoadedPlugin();
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    BasicLoyaltySystem* operator->() const { return system; }

private:
    QPluginLoader loader;
    BasicLoyaltySystem* system = nullptr;
};

} // namespace bench
