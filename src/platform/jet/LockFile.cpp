// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/LockFile.h"

#include "platform/basic/FileReplacement.h"
#include "platform/basic/Permissions.h"
#include "platform/jet/Error.h"
#include "platform/jet/RangeLock.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSysInfo>
#include <QThread>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace jet
{

namespace
{

constexpr std::uint64_t FirstUserLock = 0x10000001;
constexpr qsizetype NameSize = 32;
constexpr qsizetype EntrySize = 2 * NameSize;
constexpr qint64 LongestWait = 2000;
constexpr qint64 LongestVisit = 1000;
constexpr unsigned long Pause = 20;

QByteArray nameField(const QString &name)
{
    // Ended by a zero byte in any case.
    return name.toLatin1().left(NameSize - 1).leftJustified(NameSize, '\0');
}

} // namespace

QString LockFile::pathFor(const QString &databasePath)
{
    const QFileInfo info(databasePath);
    return info.path() + u'/' + info.completeBaseName() + QStringLiteral(".ldb");
}

LockFile::LockFile(const QString &databasePath) : databasePath_(databasePath), file_(pathFor(databasePath))
{
    QElapsedTimer timer;
    timer.start();
    while (slot_ < 0) {
        const bool isNew = !file_.exists();
        if (!basic::openWhenFree(file_, QIODevice::ReadWrite | QIODevice::Unbuffered)) {
            throw Error(ErrorNumber::CannotOpenFile,
                        QStringLiteral("The lock file %1 cannot be opened: %2.").arg(file_.fileName(), file_.errorString()));
        }
        if (isNew) {
            // Every user of the database must be able to lock it.
            basic::copyPermissions(databasePath_, file_.fileName());
        }
        if (!takeSlot()) {
            file_.close();
            if (timer.elapsed() > LongestWait) {
                throw Error(ErrorNumber::FileInUse,
                            QStringLiteral("%1 is being written by another program. Try again later.").arg(databasePath_));
            }
            QThread::msleep(Pause);
        }
    }
    file_.seek(slot_ * EntrySize);
    file_.write(nameField(QSysInfo::machineHostName().toUpper()) + nameField(QStringLiteral("Admin")));
}

LockFile::~LockFile()
{
    // By its name and while it is still locked: no other user can take it meanwhile.
    const bool isLast = tryLockOthers();
    const bool isRemoved = isLast && QFile::remove(file_.fileName());
    file_.close();
    if (isLast && !isRemoved) {
        // Where an open file cannot be removed.
        QFile::remove(file_.fileName());
    }
}

void LockFile::awaitWriter(const QString &databasePath)
{
    QFile file(pathFor(databasePath));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return;
    }
    QElapsedTimer timer;
    timer.start();
    // The last slot is never a user's own but where there are as many as can be.
    while (RangeLock(file.handle()).isTaken(FirstUserLock + Slots - 1) && timer.elapsed() < LongestWait) {
        QThread::msleep(Pause);
    }
}

bool LockFile::takeSlot()
{
    RangeLock lock(file_.handle());
    for (int slot = 0; slot < Slots; ++slot) {
        if (lock.tryLock(FirstUserLock + static_cast<std::uint64_t>(slot), 1)) {
            // The user before may have removed the file between its opening and the lock.
            if (!isStillThere()) {
                return false;
            }
            slot_ = slot;
            return true;
        }
    }
    return false;
}

bool LockFile::isStillThere() const
{
#ifdef Q_OS_UNIX
    struct stat ours {
    };
    struct stat there {
    };
    return ::fstat(file_.handle(), &ours) == 0 && ::stat(QFile::encodeName(file_.fileName()).constData(), &there) == 0
        && ours.st_dev == there.st_dev && ours.st_ino == there.st_ino;
#else
    // An open file cannot be removed: it is opened without the share mode for that.
    return true;
#endif
}

bool LockFile::isTaken(int slot) const
{
    return slot != slot_ && RangeLock(file_.handle()).isTaken(FirstUserLock + static_cast<std::uint64_t>(slot));
}

std::unique_ptr<LockFile::Exclusive> LockFile::lockOthers(Wait wait)
{
    QElapsedTimer timer;
    timer.start();
    bool isLocked = tryLockOthers();
    while (!isLocked && wait == Wait::Briefly && timer.elapsed() < LongestVisit) {
        QThread::msleep(Pause);
        isLocked = tryLockOthers();
    }
    if (!isLocked) {
        throw Error(ErrorNumber::FileInUse,
                    QStringLiteral("%1 has the file open; close it there, then try again").arg(othersPresent()));
    }
    return std::make_unique<Exclusive>(*this);
}

bool LockFile::tryLockOthers()
{
    RangeLock lock(file_.handle());
    const auto own = static_cast<std::uint64_t>(slot_);
    if (own > 0 && !lock.tryLock(FirstUserLock, own)) {
        return false;
    }
    if (!lock.tryLock(FirstUserLock + own + 1, Slots - own - 1)) {
        unlockOthers();
        return false;
    }
    return true;
}

void LockFile::unlockOthers()
{
    RangeLock lock(file_.handle());
    const auto own = static_cast<std::uint64_t>(slot_);
    if (own > 0) {
        lock.unlock(FirstUserLock, own);
    }
    lock.unlock(FirstUserLock + own + 1, Slots - own - 1);
}

QString LockFile::othersPresent() const
{
    QStringList names;
    for (int slot = 0; slot < Slots; ++slot) {
        if (!isTaken(slot)) {
            continue;
        }
        file_.seek(slot * EntrySize);
        const QByteArray entry = file_.read(NameSize);
        const QString name = QString::fromLatin1(entry.constData()).trimmed();
        if (!names.contains(name) && !name.isEmpty()) {
            names.append(name);
        }
    }
    return names.isEmpty() ? QStringLiteral("Another program") : names.join(QStringLiteral(", "));
}

} // namespace jet
