// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/Permissions.h"

#include "platform/basic/DiskSync.h"
#include "platform/basic/RunTimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <optional>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace basic
{

#ifdef Q_OS_UNIX

namespace
{

std::optional<struct stat> statusOf(const QString &path)
{
    struct stat status {
    };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? std::optional(status) : std::nullopt;
}

/// Only root may give a file away, but a member of a group may give it to the group. Whether the file now has the wanted group.
bool setOwner(const QByteArray &path, const struct stat &wanted)
{
    return (::geteuid() == 0 && ::chown(path.constData(), wanted.st_uid, wanted.st_gid) == 0)
        || ::chown(path.constData(), static_cast<uid_t>(-1), wanted.st_gid) == 0;
}

} // namespace

void followFolder(const QString &path)
{
    const auto own = statusOf(path);
    const auto folder = statusOf(QFileInfo(path).absolutePath());
    if (!own || !folder) {
        return;
    }
    const QByteArray name = QFile::encodeName(path);
    mode_t mode = folder->st_mode & (S_ISDIR(own->st_mode) ? 02777 : 0666);
    if (!setOwner(name, *folder)) {
        mode &= ~static_cast<mode_t>(02070);
    }
    // In a folder such as /tmp each user has files of their own.
    if ((folder->st_mode & S_ISVTX) != 0) {
        mode &= ~static_cast<mode_t>(022);
    }
    ::chmod(name.constData(), mode | S_IRUSR | S_IWUSR);
}

void copyPermissions(const QString &from, const QString &to)
{
    if (const auto wanted = statusOf(from)) {
        const QByteArray name = QFile::encodeName(to);
        setOwner(name, *wanted);
        ::chmod(name.constData(), wanted->st_mode & 0777);
    }
}

#else

// Files inherit the access list of their folder. A copy of a read-only file can be changed nevertheless.
void followFolder(const QString &path)
{
    QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteOwner | QFile::WriteUser);
}

void copyPermissions(const QString &, const QString &) {}

#endif

bool makeFolder(const QString &path)
{
    if (QFileInfo(path).isDir()) {
        return true;
    }
    const QString parent = QFileInfo(path).absolutePath();
    const bool isMade = parent != path && makeFolder(parent) && QDir().mkdir(path);
    if (isMade) {
        followFolder(path);
        return runOrIgnore([&parent] { syncToDisk(parent); });
    }
    return QFileInfo(path).isDir();
}

} // namespace basic
