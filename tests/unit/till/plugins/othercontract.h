// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/loyalty/abstractpluginid.h"

#include <QObject>

/// The plug-in interface as another version of the contract might have it: by the same name and
/// identifier, with another operation where this version has init.
class Q_DECL_EXPORT BasicPlugin
{
public:
    BasicPlugin();
    virtual ~BasicPlugin();
    /// Ends the process.
    virtual bool shutDown();
    virtual bool init();
};

class Q_DECL_EXPORT BasicLoyaltySystem : virtual public BasicPlugin
{
public:
    BasicLoyaltySystem();
    ~BasicLoyaltySystem() override;
};

Q_DECLARE_INTERFACE(BasicPlugin, ABSTRACT_PLUGIN_IID)
Q_DECLARE_INTERFACE(BasicLoyaltySystem, "LoyaltySystem")
