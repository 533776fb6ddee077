// SPDX-License-Identifier: GPL-3.0-or-later
// The functions of the C library that this program defines itself are found first, by the libraries it uses as well.
#include "FailingDisk.h"

#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>

namespace
{

constexpr int NoFailure = 0;

int asked = NoFailure;
int counted = 0;
failingDisk::Failure kind = failingDisk::Failure::Once;

/// Whether the call is to fail. Ends the process where that is asked for.
bool fails()
{
    if (asked == NoFailure) {
        return false;
    }
    ++counted;
    if (counted < asked || (counted > asked && kind != failingDisk::Failure::FromNowOn)) {
        return false;
    }
    if (kind == failingDisk::Failure::End) {
        _exit(0);
    }
    return true;
}

} // namespace

namespace failingDisk
{

void failAt(int call, Failure failure)
{
    asked = call;
    counted = 0;
    kind = failure;
}

int calls()
{
    return counted;
}

} // namespace failingDisk

extern "C" {

ssize_t write(int file, const void *bytes, size_t size)
{
    // Messages of the test itself are left alone.
    if (file > STDERR_FILENO && fails()) {
        if (kind == failingDisk::Failure::EndHalfway) {
            syscall(SYS_write, file, bytes, size / 2);
            _exit(0);
        }
        errno = ENOSPC;
        return -1;
    }
    return syscall(SYS_write, file, bytes, size);
}

int fsync(int file)
{
    if (fails()) {
        if (kind == failingDisk::Failure::EndHalfway) {
            _exit(0);
        }
        errno = EIO;
        return -1;
    }
    return static_cast<int>(syscall(SYS_fsync, file));
}

int ftruncate64(int file, off64_t length)
{
    if (fails()) {
        if (kind == failingDisk::Failure::EndHalfway) {
            _exit(0);
        }
        errno = EIO;
        return -1;
    }
    return static_cast<int>(syscall(SYS_ftruncate, file, length));
}

int unlink(const char *path)
{
    if (fails()) {
        if (kind == failingDisk::Failure::EndHalfway) {
            _exit(0);
        }
        errno = EIO;
        return -1;
    }
    return static_cast<int>(syscall(SYS_unlink, path));
}
}
