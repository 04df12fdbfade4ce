// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSharedPointer>

/// Makes the replaceable host objects (RestClient, CurrentTime), or hands out the double that a
/// test has registered. The pointers are instantiated in the host library, as for Singleton.
/// @tparam T a class of the host that can be made without arguments; its own header announces the
/// instantiation, so it must be included wherever the factory is used
template <typename T>
class MockFactory
{
public:
    /// The registered double, not owned; null in production. Set and cleared between calls only.
    static T* mocked;

    /// Called wherever such an object is needed, for every use anew. Any thread may call it; what
    /// is made belongs to the thread that made it.
    /// @return the registered double, which the result does not own, or else a new
    /// default-constructed T owned by the result; never null
    static QSharedPointer<T> create()
    {
        if (mocked != nullptr) {
            return QSharedPointer<T>(mocked, [](T*) {});
        }
        return QSharedPointer<T>(new T);
    }
};

template <typename T>
T* MockFactory<T>::mocked = nullptr;
