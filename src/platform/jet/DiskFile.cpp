// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/DiskFile.h"

#include "platform/basic/DiskSync.h"
#include "platform/basic/FileReplacement.h"
#include "platform/jet/Error.h"

#include <QFileInfo>

namespace jet
{

namespace
{

/// `code` is the system's.
[[noreturn]] void fail(const QFile &file, int code)
{
    if (basic::isFullDisk(code)) {
        throw Error(ErrorNumber::DiskFull, QStringLiteral("%1 cannot be written: the disk is full.").arg(file.fileName()));
    }
    throw Error(ErrorNumber::DiskError, QStringLiteral("%1 cannot be written: %2.").arg(file.fileName(), qt_error_string(code)));
}

} // namespace

void writeAt(QFile &file, qint64 offset, const char *bytes, qint64 length)
{
    if (!file.seek(offset)) {
        throw Error(ErrorNumber::DiskError, QStringLiteral("%1 cannot be written: %2.").arg(file.fileName(), file.errorString()));
    }
    if (const int failure = basic::writeAll(file.handle(), bytes, length)) {
        fail(file, failure);
    }
}

void syncFile(QFile &file)
{
    if (const int failure = basic::syncOpenFile(file.handle())) {
        fail(file, failure);
    }
}

void resizeFile(QFile &file, qint64 length)
{
    if (!file.resize(length)) {
        throw Error(ErrorNumber::DiskError, QStringLiteral("%1 cannot be written: %2.").arg(file.fileName(), file.errorString()));
    }
}

void removeFile(const QString &path)
{
    QFile file(path);
    if (!basic::retryWhileBusy([&] { return file.remove() || !file.exists(); })) {
        throw Error(ErrorNumber::DiskError, QStringLiteral("%1 cannot be removed: %2.").arg(path, file.errorString()));
    }
}

void syncFolderOf(const QString &path)
{
    try {
        basic::syncToDisk(QFileInfo(path).path());
    } catch (const basic::RunTimeError &error) {
        throw Error(ErrorNumber::DiskError, error.description());
    }
}

} // namespace jet
