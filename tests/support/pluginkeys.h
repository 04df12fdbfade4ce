// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/config/keysheet.h"

/// Has the keys of a plug-in known while it lives, as a host has that loads it.
class PluginKeys
{
public:
    /// @param file the plug-in, or where it would be: only its sheet is read
    explicit PluginKeys(const QString& file) { poshost::keysheet::registerPlugin(file); }
    ~PluginKeys() { poshost::keysheet::registerPlugin(QString()); }
    PluginKeys(const PluginKeys&) = delete;
    PluginKeys& operator=(const PluginKeys&) = delete;
};
