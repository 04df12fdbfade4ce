// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/singleton.h"

namespace orva {

/// The host's service of that type. Where the host has made none yet, a default-constructed one is
/// stored for everybody, which then lives until the process ends.
template <typename T>
T* service()
{
    if (Singleton<T>::instance == nullptr) {
        Singleton<T>::instance = new T;
    }
    return Singleton<T>::instance;
}

} // namespace orva
