// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/RangeLock.h"

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace jet
{

#ifdef _WIN32

namespace
{

HANDLE fileOf(int handle)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(handle));
}

OVERLAPPED startAt(std::uint64_t first)
{
    OVERLAPPED start{};
    start.Offset = static_cast<DWORD>(first);
    start.OffsetHigh = static_cast<DWORD>(first >> 32);
    return start;
}

} // namespace

bool RangeLock::tryLock(std::uint64_t first, std::uint64_t count)
{
    OVERLAPPED start = startAt(first);
    return LockFileEx(fileOf(handle_), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, static_cast<DWORD>(count), 0,
                      &start)
        != 0;
}

void RangeLock::unlock(std::uint64_t first, std::uint64_t count)
{
    OVERLAPPED start = startAt(first);
    UnlockFileEx(fileOf(handle_), 0, static_cast<DWORD>(count), 0, &start);
}

bool RangeLock::isTaken(std::uint64_t byte)
{
    if (!tryLock(byte, 1)) {
        return true;
    }
    unlock(byte, 1);
    return false;
}

#else

namespace
{

struct flock range(short type, std::uint64_t first, std::uint64_t count)
{
    struct flock lock {
    };
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<off_t>(first);
    lock.l_len = static_cast<off_t>(count);
    return lock;
}

} // namespace

bool RangeLock::tryLock(std::uint64_t first, std::uint64_t count)
{
    struct flock lock = range(F_WRLCK, first, count);
    return ::fcntl(handle_, F_OFD_SETLK, &lock) == 0;
}

void RangeLock::unlock(std::uint64_t first, std::uint64_t count)
{
    struct flock lock = range(F_UNLCK, first, count);
    ::fcntl(handle_, F_OFD_SETLK, &lock);
}

bool RangeLock::isTaken(std::uint64_t byte)
{
    struct flock lock = range(F_WRLCK, byte, 1);
    return ::fcntl(handle_, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

#endif

} // namespace jet
