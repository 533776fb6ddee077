// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/DiskSync.h"

#include "platform/basic/RunTimeError.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace basic
{

void syncToDisk(const QString &path)
{
    const int handle = ::open(QFile::encodeName(path).constData(), O_RDONLY);
    if (handle < 0) {
        return;
    }
    const int failure = syncOpenFile(handle);
    ::close(handle);
    if (failure == EIO || failure == ENOSPC || failure == EDQUOT) {
        throw RunTimeError(ErrorNumber::DeviceError,
                           QStringLiteral("%1 could not be written to the disk: %2.").arg(path, qt_error_string(failure)));
    }
}

int syncOpenFile(int handle)
{
    return ::fsync(handle) == 0 ? 0 : errno;
}

int writeAll(int handle, const char *bytes, qint64 length)
{
    while (length > 0) {
        const ssize_t written = ::write(handle, bytes, static_cast<std::size_t>(length));
        if (written < 0 && errno != EINTR) {
            return errno;
        }
        const qint64 done = written < 0 ? 0 : written;
        bytes += done;
        length -= done;
    }
    return 0;
}

bool isFullDisk(int systemError)
{
    return systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
}

} // namespace basic
