// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QString>

namespace poshost {

/// An operating-system lock on a file, held while this object lives. The kernel frees it when its
/// owner dies, however that happens. Excludes other processes and other objects of this one.
class HOST_EXPORT FileLock
{
public:
    /// Tries to take the lock without waiting. Makes the file, with the rights of a database there
    /// (Database::rightsOf), when it is missing; the file stays.
    /// @param fileName path of the file to lock; what is in it does not matter
    /// @throws BasicException "databaseError" when the file cannot be made or locked for another
    /// reason than that somebody holds it
    explicit FileLock(const QString& fileName);
    /// Frees the lock if it is held.
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// False: somebody else holds it.
    bool isHeld() const { return held; }

private:
    int descriptor = -1;
    bool held = false;
};

} // namespace poshost
