// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/FileLock.h"

#include "platform/basic/DiskSync.h"
#include "platform/basic/Permissions.h"
#include "platform/basic/RunTimeError.h"

#include <QFileInfo>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <cerrno>
#include <fcntl.h>
#endif

namespace basic
{

namespace
{

enum class Outcome { Locked, HeldElsewhere, Failed };

#ifdef Q_OS_WIN

Outcome lockByte(int handle)
{
    OVERLAPPED range{};
    range.OffsetHigh = 0x40000000;
    if (LockFileEx(reinterpret_cast<HANDLE>(_get_osfhandle(handle)), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                   &range)) {
        return Outcome::Locked;
    }
    return GetLastError() == ERROR_LOCK_VIOLATION ? Outcome::HeldElsewhere : Outcome::Failed;
}

#else

/// A lock of the open file description where the system has it: one of the process would be lost when any part of the process
/// closes the file, and two parts of it would share it.
Outcome lockByte(int handle)
{
    struct flock range {
    };
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    range.l_start = off_t{1} << 62;
    range.l_len = 1;
#ifdef F_OFD_SETLK
    const int command = F_OFD_SETLK;
#else
    const int command = F_SETLK;
#endif
    if (::fcntl(handle, command, &range) == 0) {
        return Outcome::Locked;
    }
    return errno == EACCES || errno == EAGAIN ? Outcome::HeldElsewhere : Outcome::Failed;
}

#endif

} // namespace

std::unique_ptr<FileLock> FileLock::tryLock(const QString &path)
{
    std::unique_ptr<FileLock> lock(new FileLock(path));
    const bool isNew = !QFileInfo::exists(path);
    if (!lock->file_.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
        throw RunTimeError(ErrorNumber::PathFileAccess,
                           QStringLiteral("The lock %1 cannot be opened: %2.").arg(path, lock->file_.errorString()));
    }
    if (isNew) {
        followFolder(path);
    }
    switch (lockByte(lock->file_.handle())) {
    case Outcome::Locked:
        return lock;
    case Outcome::HeldElsewhere:
        return nullptr;
    case Outcome::Failed:
        break;
    }
    throw RunTimeError(ErrorNumber::PathFileAccess,
                       QStringLiteral("%1 cannot be locked: the file system of its folder has no file locks.").arg(path));
}

QByteArray FileLock::text()
{
    return file_.seek(0) ? file_.readAll() : QByteArray();
}

bool FileLock::setText(const QByteArray &text)
{
    const bool isWritten = file_.seek(0) && file_.write(text) == text.size() && file_.resize(text.size());
#ifdef Q_OS_WIN
    // The file system may set the time of an open file as late as that.
    return isWritten && syncOpenFile(file_.handle()) == 0;
#else
    return isWritten;
#endif
}

} // namespace basic
