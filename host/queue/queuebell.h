// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QString>

namespace poshost {

/// Wakes a process that delivers the queue of a database while others put messages into it.
///
/// The bell is an empty file beside the database (its name with ".delivery-bell" added); ringing
/// sets its times, which the kernel tells whoever listens. A file rather than a socket: its name
/// may have any length, its rights are those of the database, any number may listen, and who rings
/// never waits and need not know whether anybody does. A ring may be lost, where the kernel watches
/// no further file for instance, so a listener looks at the queue once in a while all the same.
class HOST_EXPORT QueueBell
{
public:
    /// Listens. Makes the file when it is missing; what cannot be watched is logged and never
    /// heard.
    /// @param databaseFile path of the database that the bell hangs beside
    /// @throws BasicException "databaseError" when the file cannot be made
    explicit QueueBell(const QString& databaseFile);
    ~QueueBell();
    QueueBell(const QueueBell&) = delete;
    QueueBell& operator=(const QueueBell&) = delete;

    /// @return to be polled for input: there is some once the bell was rung; -1: nothing can be
    /// heard
    int descriptor() const { return watch; }
    /// Forgets the rings so far. Takes the file up anew when somebody has removed it.
    void clear();

    /// Whether somebody listens, in whatever process. Asks for a lock that every listener holds on
    /// the bell for as long as it lives: the kernel takes it back however a process ends, while a
    /// number of a process that somebody has written down may be another one's by now. Changes
    /// nothing. Any thread, does not block.
    /// @param databaseFile path of the database that the bell hangs beside
    /// @return false as well where the bell may not be opened
    static bool isHeard(const QString& databaseFile);

    /// Rings; does nothing where nobody has listened yet. To be called after the commit. Any
    /// thread, does not block.
    /// @param databaseFile path of the database that the bell hangs beside
    static void ring(const QString& databaseFile);

private:
    void listen();
    bool takeRings() const;

    const QString file;
    int watch;
    int presence = -1; ///< of the bell, with the lock that says that somebody listens
};

} // namespace poshost
