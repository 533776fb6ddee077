// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ProgramLock.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

std::unique_ptr<basic::FileLock> tryProgramLock(const QString &programFolder)
{
    const QFileInfo folder(programFolder);
    const QString path = folder.exists() ? folder.canonicalFilePath() : folder.absoluteFilePath();
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
#ifdef Q_OS_WIN
    // The folder for running programs is the user's home there; the temporary one is the user's too.
    const QString ofUser;
#else
    const QString ofUser = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
#endif
    const QDir running(ofUser.isEmpty() ? QDir::tempPath() : ofUser);
    return basic::FileLock::tryLock(running.filePath(QStringLiteral("farm-monitoring-%1.lock").arg(QLatin1String(hash))));
}
