// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"

#include <QDate>
#include <QString>

#include <functional>
#include <vector>

/// Dated copies of the pest database in the folder "Backups" of the Databases folder. Folders are given without a separator at
/// the end. Failures are RunTimeErrors that name the file.
namespace store
{

/// Days whose copies are retained; those of older days are removed.
inline constexpr int BackupDays = 10;

struct Backup {
    QString path;
    QDate day;
};

/// Makes the day's copy of the open pest database, unless the day has one or the database is not open. To be called before
/// the first write of the session. Of a damaged database none is made, so that the good copies stay: error 75.
void backupForToday(SessionContext &session);

/// Copies the pest database as of now; a second copy of a day has the time in its name. Returns the copy's path. Error 75 when
/// the database is damaged.
QString backUpNow(const QString &databasesFolder);

/// Newest first. Files that a restore replaced are not among them.
std::vector<Backup> listBackups(const QString &databasesFolder);

/// Why `file` cannot replace the pest database: damaged, no database, or without the tables; empty when it can.
QString whyNotRestorable(const QString &file, const std::function<void(int percent)> &progress = {});

/// Replaces the pest database, which nobody may have open, by `file`. The replaced file is moved to the Backups folder; its path
/// is returned, empty when there was none. Error 5 when `file` is not restorable, 3045 when the present file is in use; then
/// nothing changed.
QString restoreBackup(const QString &databasesFolder, const QString &file, const std::function<void(int percent)> &progress = {});

} // namespace store
