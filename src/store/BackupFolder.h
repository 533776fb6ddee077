// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/FileLock.h"

#include <QDate>
#include <QString>

#include <memory>
#include <vector>

namespace store
{

/// Days whose copies are retained; those of older days are removed.
inline constexpr int BackupDays = 10;

struct Backup {
    QString path;
    QDate day;
};

/// The folder "Backups" in a farm's Databases folder: names of the dated copies, which of them are retained, space for another.
/// Failures are RunTimeErrors that name the file.
class BackupFolder
{
public:
    /// Without a separator at the end.
    explicit BackupFolder(QString databasesFolder) : databases_(std::move(databasesFolder)) {}

    QString pestFile() const;
    QString path() const { return databases_ + QStringLiteral("/Backups"); }
    QString copyOfDay(QDate day) const;
    /// A name with date and time that no file has.
    QString freeCopyName() const;
    /// A name for a file that a restore replaces; it is not listed as a copy.
    QString freeReplacedName() const;
    /// Newest first.
    std::vector<Backup> copies() const;

    /// Creates the folder, never the Databases folder above it.
    void create() const;
    /// One copy is made at a time; waits for another program that makes one. Error 70 when it takes more than a minute.
    std::unique_ptr<basic::FileLock> lock() const;
    /// Removes what killed programs have left unfinished. Under the lock.
    void removeLeftovers() const;
    /// Error 61 when a copy of so many bytes would leave too little space for a day's work. Removes older copies first, down to
    /// three days, where that gives the space.
    void requireSpace(qint64 bytes, QDate today) const;
    /// Removes the copies beyond BackupDays. Copies dated after `today` come from a clock that was wrong; they are older than
    /// those of today and go first. The one just made always stays.
    void removeOldest(QDate today, const QString &justMade) const;

private:
    std::vector<std::vector<Backup>> days(QDate today) const;

    QString databases_;
};

} // namespace store
