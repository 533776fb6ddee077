// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/DiskFile.h"

#include "platform/basic/DiskSync.h"
#include "platform/jet/Error.h"

#include <QFileInfo>

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

[[noreturn]] void fail(const QFile &file)
{
    const bool isFull = file.error() == QFile::ResourceError;
    throw Error(isFull ? ErrorNumber::DiskFull : ErrorNumber::DiskError,
                isFull ? QStringLiteral("%1 cannot be written: the disk is full.").arg(file.fileName())
                       : QStringLiteral("%1 cannot be written: %2.").arg(file.fileName(), file.errorString()));
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
    if (!file.seek(offset) || file.write(bytes, length) != length) {
        fail(file);
    }
}

void syncFile(QFile &file)
{
    if (!waitForDisk(file.handle())) {
        throw Error(ErrorNumber::DiskError, QStringLiteral("%1 cannot be written to the disk.").arg(file.fileName()));
    }
}

void resizeFile(QFile &file, qint64 length)
{
    if (!file.resize(length)) {
        fail(file);
    }
}

void removeFile(const QString &path)
{
    QFile file(path);
    if (!file.remove()) {
        throw Error(ErrorNumber::DiskError, QStringLiteral("%1 cannot be removed: %2.").arg(path, file.errorString()));
    }
    syncFolderOf(path);
}

void syncFolderOf(const QString &path)
{
    basic::syncToDisk(QFileInfo(path).path());
}

} // namespace jet
