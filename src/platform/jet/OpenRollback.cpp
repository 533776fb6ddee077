// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/OpenRollback.h"

#include "platform/basic/FileReplacement.h"
#include "platform/basic/Permissions.h"
#include "platform/jet/DiskFile.h"
#include "platform/jet/Error.h"
#include "platform/jet/PageCommit.h"
#include "platform/jet/RollbackFile.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace jet
{

OpenRollback::OpenRollback(const QString &databasePath) : databasePath_(databasePath), file_(rollbackPath(databasePath)) {}

bool OpenRollback::isGone() const
{
#ifdef Q_OS_UNIX
    struct stat ours {
    };
    struct stat there {
    };
    return ::fstat(file_.handle(), &ours) != 0 || ::stat(QFile::encodeName(file_.fileName()).constData(), &there) != 0
        || ours.st_dev != there.st_dev || ours.st_ino != there.st_ino;
#else
    return false;
#endif
}

void OpenRollback::write(const RollbackFile &rollback)
{
    if (file_.isOpen() && isGone()) {
        file_.close();
    }
    const bool isNew = !file_.isOpen();
    if (isNew) {
        if (!basic::openWhenFree(file_, QIODevice::ReadWrite | QIODevice::Unbuffered)) {
            throw Error(ErrorNumber::CannotOpenFile,
                        QStringLiteral("%1 cannot be written: %2.").arg(file_.fileName(), file_.errorString()));
        }
        // It holds what the database holds.
        basic::copyPermissions(databasePath_, file_.fileName());
    }
    const QByteArray bytes = rollback.bytes();
    writeAt(file_, 0, bytes.constData(), bytes.size());
    syncFile(file_);
    if (isNew) {
        // A user before may have been stopped before the name of its file was on the disk.
        syncFolderOf(file_.fileName());
    }
}

void OpenRollback::clear()
{
    const QByteArray zeros(RollbackFile::MagicSize, '\0');
    writeAt(file_, 0, zeros.constData(), zeros.size());
    syncFile(file_);
}

void OpenRollback::remove()
{
    file_.close();
    QFile::remove(file_.fileName());
}

} // namespace jet
