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

/// Copies kept; the oldest beyond them are removed.
inline constexpr int BackupsKept = 10;

struct Backup {
    QString path;
    QDate day;
};

/// Makes the day's copy of the open pest database, unless the day has one or the database is not open. To be called before
/// the first write of the session.
void backupForToday(SessionContext &session);

/// Copies a database file as of now to the day's copy, replacing it when the day has one. Returns the copy's path.
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
