// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

class BasicLoyaltySystem;

/// The loyalty systems that have registered with the host, in the order of registration. Does not
/// own them. Host thread only, and to the very end of the process: a system that nobody deleted may
/// go when the static objects of this library are gone already.
class HOST_EXPORT LoyaltySystems
{
public:
    /// Makes a system known.
    /// @param system stays its owner's, and is taken out again before it is deleted; its destructor
    /// does so
    /// @return false when another system is registered under the same type code; registering the
    /// same object again is no error.
    static bool add(BasicLoyaltySystem* system);
    /// Takes a system out.
    /// @param system only compared, never called
    /// @return false when the system was not registered.
    static bool remove(BasicLoyaltySystem* system);
    /// Looks a system up.
    /// @param loyaltySystemType its type code
    /// @return the system, or null; not owned
    static BasicLoyaltySystem* find(int loyaltySystemType);
};
