// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/DiskSync.h"

#include <QFile>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace basic
{

void syncToDisk([[maybe_unused]] const QString &path)
{
#ifdef Q_OS_UNIX
    const int handle = ::open(QFile::encodeName(path).constData(), O_RDONLY);
    if (handle >= 0) {
        ::fsync(handle);
        ::close(handle);
    }
#endif
}

} // namespace basic
