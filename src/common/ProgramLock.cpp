// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ProgramLock.h"

#include "platform/basic/RunTimeError.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>

#include <utility>

ProgramLock::ProgramLock(std::unique_ptr<QLockFile> file) : file_(std::move(file)) {}

ProgramLock::~ProgramLock() = default;

std::unique_ptr<ProgramLock> ProgramLock::tryLock(const QString &appPath)
{
    // Not in the folder itself, which may be read-only.
    const QFileInfo folder(appPath);
    const QString path = folder.exists() ? folder.canonicalFilePath() : folder.absoluteFilePath();
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    auto file =
        std::make_unique<QLockFile>(QDir::temp().filePath(QStringLiteral("farm-monitoring-%1.lock").arg(QLatin1String(hash))));
    file->setStaleLockTime(0);
    if (!file->tryLock(0)) {
        if (file->error() == QLockFile::LockFailedError) {
            return nullptr;
        }
        throw basic::RunTimeError(
            basic::ErrorNumber::PathFileAccess,
            QStringLiteral("The lock %1, by which the program knows that it runs once only, cannot be created. Check the "
                           "permissions of its folder and the free space on its disk.")
                .arg(file->fileName()));
    }
    return std::unique_ptr<ProgramLock>(new ProgramLock(std::move(file)));
}
