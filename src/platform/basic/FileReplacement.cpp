// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/FileReplacement.h"

#include "platform/basic/NativePath.h"

#include <QSaveFile>
#include <QTemporaryFile>

#ifdef Q_OS_WIN
#include <QElapsedTimer>
#include <QThread>

#include <windows.h>
#else
#include <filesystem>
#include <system_error>
#endif

namespace basic
{

#ifdef Q_OS_WIN

bool retryWhileBusy(const std::function<bool()> &attempt)
{
    constexpr qint64 LongestWait = 2000;
    constexpr unsigned long Pause = 50;
    QElapsedTimer waited;
    waited.start();
    while (!attempt()) {
        if (waited.elapsed() > LongestWait) {
            return false;
        }
        QThread::msleep(Pause);
    }
    return true;
}

bool openWhenFree(QFile &file, QIODevice::OpenMode mode)
{
    const QString path = nativePath(file.fileName());
    // Before the attempt, which another program that leaves meanwhile must not spoil.
    const auto isOpenedByAnother = [&] {
        const DWORD attributes = GetFileAttributesW(reinterpret_cast<const wchar_t *>(path.utf16()));
        if (attributes != INVALID_FILE_ATTRIBUTES) {
            return (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) == 0;
        }
        // A file that is being removed is not found otherwise than a missing one.
        const DWORD failure = GetLastError();
        return failure != ERROR_FILE_NOT_FOUND && failure != ERROR_PATH_NOT_FOUND;
    };
    return retryWhileBusy([&] {
               const bool mayFail = isOpenedByAnother();
               return file.open(mode) || !mayFail;
           })
        && file.isOpen();
}

QString replaceFile(const QString &from, const QString &to)
{
    const QString source = nativePath(from);
    const QString target = nativePath(to);
    DWORD failure = ERROR_SUCCESS;
    retryWhileBusy([&] {
        const bool isMoved =
            MoveFileExW(reinterpret_cast<const wchar_t *>(source.utf16()), reinterpret_cast<const wchar_t *>(target.utf16()),
                        MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
            != 0;
        failure = isMoved ? ERROR_SUCCESS : GetLastError();
        return failure != ERROR_SHARING_VIOLATION && failure != ERROR_ACCESS_DENIED && failure != ERROR_LOCK_VIOLATION;
    });
    return failure == ERROR_SUCCESS ? QString() : qt_error_string(static_cast<int>(failure));
}

#else

bool retryWhileBusy(const std::function<bool()> &attempt)
{
    return attempt();
}

bool openWhenFree(QFile &file, QIODevice::OpenMode mode)
{
    return file.open(mode);
}

QString replaceFile(const QString &from, const QString &to)
{
    std::error_code error;
    std::filesystem::rename(from.toStdU16String(), to.toStdU16String(), error);
    return error ? QString::fromStdString(error.message()) : QString();
}

#endif

QString writeWholeFile(const QString &path, const QByteArray &bytes)
{
    QString failure;
    retryWhileBusy([&] {
        QSaveFile file(path);
        const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
        failure = isWritten ? QString() : file.errorString();
        return isWritten || file.error() != QFileDevice::RenameError;
    });
    return failure;
}

UnfinishedFile::UnfinishedFile(const QString &pattern)
{
    // An open file cannot be renamed on every system, and a QTemporaryFile stays open for its lifetime.
    QTemporaryFile file(pattern);
    if (file.open()) {
        file.setAutoRemove(false);
        path_ = file.fileName();
    }
    error_ = file.errorString();
}

UnfinishedFile::~UnfinishedFile()
{
    if (!path_.isEmpty()) {
        QFile::remove(path_);
    }
}

bool UnfinishedFile::rename(const QString &name)
{
    const bool isRenamed =
        retryWhileBusy([&] { return QFile::rename(path_, name) || QFile::exists(name); }) && !QFile::exists(path_);
    if (isRenamed) {
        path_.clear();
    }
    return isRenamed;
}

} // namespace basic
