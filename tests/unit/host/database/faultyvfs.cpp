// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "faultyvfs.h"

#include <sqlite3.h>

namespace faultyvfs {

namespace {

/// SQLite asks for this much more room in each of its file objects; the real one follows.
struct File
{
    sqlite3_file base;
    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_vfs* realVfs = nullptr;
int countdown = 0;

/// Counts an access.
bool fails()
{
    return countdown > 0 && --countdown == 0;
}

sqlite3_file* realOf(sqlite3_file* file)
{
    return reinterpret_cast<File*>(file)->real();
}

int closeFile(sqlite3_file* file)
{
    return realOf(file)->pMethods->xClose(realOf(file));
}

int readFile(sqlite3_file* file, void* to, int amount, sqlite3_int64 offset)
{
    return fails() ? SQLITE_IOERR_READ
                   : realOf(file)->pMethods->xRead(realOf(file), to, amount, offset);
}

int writeFile(sqlite3_file* file, const void* from, int amount, sqlite3_int64 offset)
{
    return fails() ? SQLITE_FULL
                   : realOf(file)->pMethods->xWrite(realOf(file), from, amount, offset);
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size)
{
    return fails() ? SQLITE_IOERR_TRUNCATE : realOf(file)->pMethods->xTruncate(realOf(file), size);
}

int syncFile(sqlite3_file* file, int flags)
{
    return fails() ? SQLITE_IOERR_FSYNC : realOf(file)->pMethods->xSync(realOf(file), flags);
}

int fileSize(sqlite3_file* file, sqlite3_int64* size)
{
    return realOf(file)->pMethods->xFileSize(realOf(file), size);
}

int lockFile(sqlite3_file* file, int level)
{
    return fails() ? SQLITE_IOERR_LOCK : realOf(file)->pMethods->xLock(realOf(file), level);
}

int unlockFile(sqlite3_file* file, int level)
{
    return realOf(file)->pMethods->xUnlock(realOf(file), level);
}

int checkReservedLock(sqlite3_file* file, int* result)
{
    return realOf(file)->pMethods->xCheckReservedLock(realOf(file), result);
}

int fileControl(sqlite3_file* file, int operation, void* argument)
{
    return realOf(file)->pMethods->xFileControl(realOf(file), operation, argument);
}

int sectorSize(sqlite3_file* file)
{
    return realOf(file)->pMethods->xSectorSize(realOf(file));
}

int deviceCharacteristics(sqlite3_file* file)
{
    return realOf(file)->pMethods->xDeviceCharacteristics(realOf(file));
}

int shmMap(sqlite3_file* file, int page, int size, int extend, void volatile** to)
{
    return realOf(file)->pMethods->xShmMap(realOf(file), page, size, extend, to);
}

int shmLock(sqlite3_file* file, int offset, int count, int flags)
{
    const bool unlocks = (flags & SQLITE_SHM_UNLOCK) != 0;
    return !unlocks && fails()
               ? SQLITE_IOERR_SHMLOCK
               : realOf(file)->pMethods->xShmLock(realOf(file), offset, count, flags);
}

void shmBarrier(sqlite3_file* file)
{
    realOf(file)->pMethods->xShmBarrier(realOf(file));
}

int shmUnmap(sqlite3_file* file, int remove)
{
    return realOf(file)->pMethods->xShmUnmap(realOf(file), remove);
}

const sqlite3_io_methods methods{2,
                                 closeFile,
                                 readFile,
                                 writeFile,
                                 truncateFile,
                                 syncFile,
                                 fileSize,
                                 lockFile,
                                 unlockFile,
                                 checkReservedLock,
                                 fileControl,
                                 sectorSize,
                                 deviceCharacteristics,
                                 shmMap,
                                 shmLock,
                                 shmBarrier,
                                 shmUnmap,
                                 nullptr,
                                 nullptr};

int openFile(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* outFlags)
{
    file->pMethods = nullptr; // tells SQLite not to close it
    if (fails()) {
        return SQLITE_CANTOPEN;
    }
    const int result = realVfs->xOpen(realVfs, name, realOf(file), flags, outFlags);
    if (result == SQLITE_OK) {
        file->pMethods = &methods;
    }
    return result;
}

int deleteFile(sqlite3_vfs*, const char* name, int syncFolder)
{
    return fails() ? SQLITE_IOERR_DELETE : realVfs->xDelete(realVfs, name, syncFolder);
}

sqlite3_vfs vfs;

} // namespace

void install()
{
    if (realVfs == nullptr) {
        realVfs = sqlite3_vfs_find(nullptr);
        vfs = *realVfs;
        vfs.zName = "faulty";
        vfs.szOsFile = static_cast<int>(sizeof(File)) + realVfs->szOsFile;
        vfs.xOpen = openFile;
        vfs.xDelete = deleteFile;
        sqlite3_vfs_register(&vfs, 1);
    }
}

void failNth(int n)
{
    countdown = n;
}

bool disarm()
{
    const bool reached = countdown == 0;
    countdown = 0;
    return reached;
}

} // namespace faultyvfs
