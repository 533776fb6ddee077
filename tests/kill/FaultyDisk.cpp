// SPDX-License-Identifier: GPL-3.0-or-later
#include "FaultyDisk.h"

#include <sqlite3.h>

#include <new>
#include <optional>

namespace
{

using Fault = FaultyDisk::Fault;
enum class Operation { Write, Sync, Open, Delete, Truncate };

struct Plan {
    std::optional<Fault> fault;
    int untilFailure = 0;
    bool hasFailed = false;
};
Plan plan;

bool concerns(Fault fault, Operation operation)
{
    switch (fault) {
    case Fault::Write:
    case Fault::Full:
        return operation == Operation::Write;
    case Fault::Sync:
        return operation == Operation::Sync;
    case Fault::Open:
        return operation == Operation::Open;
    case Fault::Delete:
        return operation == Operation::Delete;
    case Fault::Gone:
        return true;
    }
    return false;
}

bool fails(Operation operation)
{
    if (!plan.fault || !concerns(*plan.fault, operation)) {
        return false;
    }
    const bool stays = *plan.fault == Fault::Full || *plan.fault == Fault::Gone;
    const int number = --plan.untilFailure;
    const bool now = number == 0 || (stays && number < 0);
    plan.hasFailed = plan.hasFailed || now;
    return now;
}

/// A file of SQLite, followed in memory by the real one.
struct File {
    sqlite3_file base;
    sqlite3_file *real;
};

sqlite3_vfs *realVfs = nullptr;

sqlite3_file *real(sqlite3_file *file)
{
    return reinterpret_cast<File *>(file)->real;
}

int closeFile(sqlite3_file *file)
{
    sqlite3_file *target = real(file);
    return target->pMethods != nullptr ? target->pMethods->xClose(target) : SQLITE_OK;
}
int readFile(sqlite3_file *file, void *bytes, int count, sqlite3_int64 offset)
{
    return real(file)->pMethods->xRead(real(file), bytes, count, offset);
}
int writeFile(sqlite3_file *file, const void *bytes, int count, sqlite3_int64 offset)
{
    if (fails(Operation::Write)) {
        return plan.fault == Fault::Full ? SQLITE_FULL : SQLITE_IOERR_WRITE;
    }
    return real(file)->pMethods->xWrite(real(file), bytes, count, offset);
}
int truncateFile(sqlite3_file *file, sqlite3_int64 size)
{
    return fails(Operation::Truncate) ? SQLITE_IOERR_TRUNCATE : real(file)->pMethods->xTruncate(real(file), size);
}
int syncFile(sqlite3_file *file, int flags)
{
    return fails(Operation::Sync) ? SQLITE_IOERR_FSYNC : real(file)->pMethods->xSync(real(file), flags);
}
int fileSize(sqlite3_file *file, sqlite3_int64 *size)
{
    return real(file)->pMethods->xFileSize(real(file), size);
}
int lockFile(sqlite3_file *file, int lock)
{
    return real(file)->pMethods->xLock(real(file), lock);
}
int unlockFile(sqlite3_file *file, int lock)
{
    return real(file)->pMethods->xUnlock(real(file), lock);
}
int checkReservedLock(sqlite3_file *file, int *answer)
{
    return real(file)->pMethods->xCheckReservedLock(real(file), answer);
}
int fileControl(sqlite3_file *file, int operation, void *argument)
{
    return real(file)->pMethods->xFileControl(real(file), operation, argument);
}
int sectorSize(sqlite3_file *file)
{
    return real(file)->pMethods->xSectorSize(real(file));
}
int characteristics(sqlite3_file *file)
{
    return real(file)->pMethods->xDeviceCharacteristics(real(file));
}

/// Version 1: without shared memory and mapped files, which this program does not use.
const sqlite3_io_methods Methods{1,        closeFile,  readFile,          writeFile,   truncateFile, syncFile,        fileSize,
                                 lockFile, unlockFile, checkReservedLock, fileControl, sectorSize,   characteristics, nullptr,
                                 nullptr,  nullptr,    nullptr,           nullptr,     nullptr};

int openFile(sqlite3_vfs *, sqlite3_filename name, sqlite3_file *file, int flags, int *outFlags)
{
    auto *ours = new (file) File{};
    const bool isJournal = (flags & SQLITE_OPEN_MAIN_JOURNAL) != 0;
    if (isJournal && fails(Operation::Open)) {
        return SQLITE_CANTOPEN;
    }
    ours->real = reinterpret_cast<sqlite3_file *>(ours + 1);
    const int code = realVfs->xOpen(realVfs, name, ours->real, flags, outFlags);
    ours->base.pMethods = code == SQLITE_OK ? &Methods : nullptr;
    return code;
}

int deleteFile(sqlite3_vfs *, const char *name, int syncFolder)
{
    return fails(Operation::Delete) ? SQLITE_IOERR_DELETE : realVfs->xDelete(realVfs, name, syncFolder);
}

sqlite3_vfs faultyVfs()
{
    realVfs = sqlite3_vfs_find(nullptr);
    sqlite3_vfs vfs = *realVfs;
    vfs.szOsFile = static_cast<int>(sizeof(File)) + realVfs->szOsFile;
    vfs.zName = "faulty";
    vfs.pNext = nullptr;
    vfs.xOpen = openFile;
    vfs.xDelete = deleteFile;
    return vfs;
}

/// Made once: connections may outlive the disk.
sqlite3_vfs &registered()
{
    static sqlite3_vfs vfs = faultyVfs();
    return vfs;
}

} // namespace

FaultyDisk::FaultyDisk()
{
    sqlite3_vfs_register(&registered(), 1);
}

FaultyDisk::~FaultyDisk()
{
    repair();
    sqlite3_vfs_unregister(&registered());
}

void FaultyDisk::failAt(Fault fault, int number)
{
    plan = {fault, number, false};
}

bool FaultyDisk::repair()
{
    const bool hasFailed = plan.hasFailed;
    plan = {};
    return hasFailed;
}
