// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ProgramLock.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>

#include <utility>

ProgramLock::ProgramLock(std::unique_ptr<QLockFile> file) : file_(std::move(file)) {}

ProgramLock::~ProgramLock() = default;

std::unique_ptr<ProgramLock> ProgramLock::tryLock(const QString &appPath)
{
    // Beside the folder's own files it could not lie: the folder may be read-only.
    const QFileInfo folder(appPath);
    const QString path = folder.exists() ? folder.canonicalFilePath() : folder.absoluteFilePath();
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    auto file =
        std::make_unique<QLockFile>(QDir::temp().filePath(QStringLiteral("farm-monitoring-%1.lock").arg(QLatin1String(hash))));
    file->setStaleLockTime(0);
    if (!file->tryLock(0)) {
        return nullptr;
    }
    return std::unique_ptr<ProgramLock>(new ProgramLock(std::move(file)));
}
