// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// The process-wide object of a service (Config, Session, DBQueueBroker).
///
/// The pointers are instantiated in the host library and exported from it, so that the till and
/// every plug-in it loads see the same object. The service's own header announces that
/// instantiation; it must be included wherever the pointer is used.
/// @tparam T a service of the host that can be made without arguments
template <typename T>
class Singleton
{
public:
    /// The service, or null until somebody needs it. Whoever finds null makes a
    /// default-constructed T and stores it here before using it. The pointer does not own: a host
    /// that puts an object of its own here keeps it alive and takes it out again. Host thread only.
    static T* instance;
};

template <typename T>
T* Singleton<T>::instance = nullptr;
