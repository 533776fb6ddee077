// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFile>

namespace jet
{

/// Each raises error 3026 when the disk is full, 3043 for any other failure, naming the file.
void writeAt(QFile &file, qint64 offset, const char *bytes, qint64 length);
/// Waits until what was written is on the disk.
void syncFile(QFile &file);
void resizeFile(QFile &file, qint64 length);
void removeFile(const QString &path);
/// Waits until the names in the folder of a file are on the disk.
void syncFolderOf(const QString &path);

} // namespace jet
