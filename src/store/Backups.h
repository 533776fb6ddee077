// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"

#include <QDate>
#include <QString>

#include <functional>
#include <vector>

/// Dated copies of the pest database in the folder "Backups" of the Databases folder. Folders are told without a separator at
/// the end. Failures are RunTimeErrors that name the file.
namespace store
{

/// Days whose copies are kept; those of older days are removed.
inline constexpr int BackupDaysKept = 10;

struct Backup {
    QString path;
    QDate day;
};

/// Makes the day's copy of the open pest database, unless the day has one or the database is not open. To be called before
/// the first write of the session. Of a damaged database none is made, so that the good copies stay: error 75.
void backupForToday(SessionContext &session);

/// Copies the pest database as of now; a second copy of a day bears the time too. Returns the copy's path. Error 75 when the
/// database is damaged.
QString backUpNow(const QString &databasesFolder);

/// Newest first. Copies that a restore put aside are not among them.
std::vector<Backup> listBackups(const QString &databasesFolder);

/// What hinders `file` from taking the place of the pest database: damaged, no database, or without the tables; empty when
/// nothing does.
QString whyNotRestorable(const QString &file, const std::function<void(int percent)> &progress = {});

/// Puts `file` in the place of the pest database, which nobody may have open. The file replaced is kept in the Backups folder;
/// its path is returned, empty when there was none. Error 5 when `file` is not restorable, 3045 when the present file is in use;
/// then nothing changed.
QString restoreBackup(const QString &databasesFolder, const QString &file, const std::function<void(int percent)> &progress = {});

} // namespace store
