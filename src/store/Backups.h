// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

/// Copies of the pest database on request, and the restore of one. Folders are given without a separator at the end. Failures are
/// RunTimeErrors that name the file.
namespace store
{

/// Copies the pest database; a second copy of a day has the time in its name. Returns the copy's path, when the copy was checked
/// and is on the disk. Error 75 when the database is damaged.
QString backUpNow(const QString &databasesFolder, const std::function<void(int percent)> &progress = {});

/// Why `file` cannot replace the pest database: damaged, no database, or without the tables; empty when it can.
QString whyNotRestorable(const QString &file, const std::function<void(int percent)> &progress = {});

/// Replaces the pest database, which nobody may have open, by `file`; the new file has owner and permissions of the replaced one.
/// The replaced file is moved to the Backups folder; its path is returned, empty when there was none. Error 5 when `file` is not
/// restorable, 3045 when the present file is in use; then nothing changed.
QString restoreBackup(const QString &databasesFolder, const QString &file, const std::function<void(int percent)> &progress = {});

/// Removes what a killed restore has left in the Databases folder. For the holder of the farm's lock.
void removeRestoreLeftovers(const QString &databasesFolder);

} // namespace store
