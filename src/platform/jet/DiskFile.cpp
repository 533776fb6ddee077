// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/DiskFile.h"

#include "platform/basic/DiskSync.h"
#include "platform/jet/Error.h"

#include <QFileInfo>

#include <algorithm>
#include <cerrno>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace jet
{

namespace
{

/// `code` is the system's. A limit on the size of a file or on a user's share of the disk counts as a full disk.
[[noreturn]] void fail(const QFile &file, int code)
{
#ifdef EDQUOT
    const bool isOverShare = code == EDQUOT;
#else
    const bool isOverShare = false;
#endif
    if (code == ENOSPC || code == EFBIG || isOverShare) {
        throw Error(ErrorNumber::DiskFull, QStringLiteral("%1 cannot be written: the disk is full.").arg(file.fileName()));
    }
    throw Error(ErrorNumber::DiskError, QStringLiteral("%1 cannot be written: %2.").arg(file.fileName(), qt_error_string(code)));
}

bool waitForDisk(int handle)
{
#ifdef _WIN32
    return FlushFileBuffers(reinterpret_cast<HANDLE>(_get_osfhandle(handle))) != 0;
#else
    return ::fsync(handle) == 0;
#endif
}

} // namespace

void writeAt(QFile &file, qint64 offset, const char *bytes, qint64 length)
{
    if (!file.seek(offset)) {
        fail(file, errno);
    }
    while (length > 0) {
#ifdef _WIN32
        const auto written = ::_write(file.handle(), bytes, static_cast<unsigned int>(length));
#else
        const auto written = ::write(file.handle(), bytes, static_cast<std::size_t>(length));
#endif
        if (written < 0 && errno != EINTR) {
            fail(file, errno);
        }
        const auto done = std::max<qint64>(written, 0);
        bytes += done;
        length -= done;
    }
}

void syncFile(QFile &file)
{
    if (!waitForDisk(file.handle())) {
        fail(file, errno);
    }
}

void resizeFile(QFile &file, qint64 length)
{
    if (!file.resize(length)) {
        throw Error(ErrorNumber::DiskError, QStringLiteral("%1 cannot be written: %2.").arg(file.fileName(), file.errorString()));
    }
}

void removeFile(const QString &path)
{
    QFile file(path);
    if (!file.remove()) {
        throw Error(ErrorNumber::DiskError, QStringLiteral("%1 cannot be removed: %2.").arg(path, file.errorString()));
    }
}

void syncFolderOf(const QString &path)
{
    try {
        basic::syncToDisk(QFileInfo(path).path());
    } catch (const basic::RunTimeError &error) {
        throw Error(ErrorNumber::DiskError, error.description());
    }
}

} // namespace jet
