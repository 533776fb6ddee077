// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/DiskSync.h"

#include "platform/basic/RunTimeError.h"

#include <QFile>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace basic
{

void syncToDisk([[maybe_unused]] const QString &path)
{
#ifdef Q_OS_UNIX
    const int handle = ::open(QFile::encodeName(path).constData(), O_RDONLY);
    if (handle < 0) {
        return;
    }
    const int failure = ::fsync(handle) == 0 ? 0 : errno;
    ::close(handle);
    if (failure == EIO || failure == ENOSPC || failure == EDQUOT) {
        throw RunTimeError(ErrorNumber::DeviceError,
                           QStringLiteral("%1 could not be written to the disk: %2.").arg(path, qt_error_string(failure)));
    }
#endif
}

} // namespace basic
