// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSharedPointer>

/// Makes the replaceable host objects (RestClient, CurrentTime), or hands out the double that a
/// test has registered. The pointers are instantiated in the host library, as for Singleton.
template <typename T>
class MockFactory
{
public:
    /// The registered double, not owned; null in production. Set and cleared between calls only.
    static T* mocked;

    /// Returns the registered double, which the result does not own, or else a new
    /// default-constructed T owned by the result. Never null.
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
