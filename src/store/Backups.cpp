// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Backups.h"

#include "platform/basic/Clock.h"
#include "platform/basic/DiskSync.h"
#include "platform/basic/FileReplacement.h"
#include "platform/basic/Permissions.h"
#include "platform/dao/Workspace.h"
#include "store/BackupFolder.h"
#include "store/DatedCopy.h"
#include "store/Schema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

namespace store
{

namespace
{

const QString RestoreSuffix = QStringLiteral(".restore.new");

[[noreturn]] void fail(const QString &what)
{
    throw basic::RunTimeError(basic::ErrorNumber::PathFileAccess, what);
}

/// Replaces the target in one step, so that there is a whole file under its name at every moment.
void moveOver(const QString &from, const QString &to)
{
    if (const QString failure = basic::replaceFile(from, to); !failure.isEmpty()) {
        fail(QStringLiteral("%1 could not be written: %2.").arg(to, failure));
    }
    basic::syncToDisk(QFileInfo(to).absolutePath());
}

/// Rolls back what a killed program left in a file, so that no journal belongs to it any more. A file that cannot be opened
/// retains its journal, and both are moved together; a file that is in use stops the restore.
void rollBackJournal(const QString &file)
{
    try {
        const std::unique_ptr<dao::Database> database = dao::Workspace::OpenDatabase(file, true, false, connectText());
        database->tableNames();
    } catch (const basic::RunTimeError &error) {
        if (error.number() == static_cast<int>(dao::DataErrorNumber::FileInUse)) {
            throw;
        }
    }
}

/// For reading, since a Jet file that is open for writing here cannot be written by the program that uses it. A file with the
/// journal of a killed program has to be opened for writing.
std::unique_ptr<dao::Database> openForCopy(const QString &file)
{
    try {
        return dao::Workspace::OpenDatabase(file, false, true, connectText());
    } catch (const dao::DataError &error) {
        if (error.number() != static_cast<int>(dao::DataErrorNumber::NeedsRepair)) {
            throw;
        }
    }
    return dao::Workspace::OpenDatabase(file, false, false, connectText());
}

QString preserveReplaced(const BackupFolder &folder)
{
    const QString current = folder.pestFile();
    if (!QFileInfo::exists(current)) {
        return {};
    }
    rollBackJournal(current);
    QString replaced = folder.freeReplacedName();
    if (!QFile::copy(current, replaced)) {
        fail(QStringLiteral("The present %1 could not be copied to %2; nothing was restored.").arg(current, replaced));
    }
    basic::copyPermissions(current, replaced);
    // After a power cut one of the two must exist, under its name in the folder.
    basic::syncToDisk(replaced);
    basic::syncToDisk(folder.path());
    // A journal left with the restored file would be rolled back into the wrong file.
    for (const QString &companion : dao::Workspace::companionFiles(current)) {
        if (companion.startsWith(current) && QFileInfo::exists(companion)) {
            moveOver(companion, replaced + companion.mid(current.size()));
            basic::syncToDisk(QFileInfo(current).absolutePath());
        }
    }
    return replaced;
}

} // namespace

QString backUpNow(const QString &databasesFolder, const std::function<void(int percent)> &progress)
{
    const BackupFolder folder(databasesFolder);
    const std::unique_ptr<dao::Database> database = openForCopy(folder.pestFile());
    folder.create();
    const auto lock = folder.lock();
    const QDate today = basic::Clock::today();
    QString target = folder.copyOfDay(today);
    if (QFileInfo::exists(target)) {
        target = folder.freeCopyName();
    }
    DatedCopy(progress).make(*database, folder, target, today);
    return target;
}

QString whyNotRestorable(const QString &file, const std::function<void(int percent)> &progress)
{
    try {
        const std::unique_ptr<dao::Database> database = dao::Workspace::OpenDatabase(file, false, true, connectText());
        const QStringList faults = database->checkIntegrity(progress);
        if (!faults.isEmpty()) {
            return QStringLiteral("%1 is damaged: %2").arg(file, faults.front());
        }
        const QStringList names = database->tableNames();
        for (const SchemaTable &table : schema()) {
            if (table.file == DatabaseFile::Pest && !table.optional && !names.contains(table.name, Qt::CaseInsensitive)) {
                return QStringLiteral("%1 is not a copy of %2: the table %3 is missing.")
                    .arg(file, fileName(table.file), table.name);
            }
        }
    } catch (const basic::RunTimeError &error) {
        return error.description();
    }
    return {};
}

QString restoreBackup(const QString &databasesFolder, const QString &file, const std::function<void(int percent)> &progress)
{
    const QString reason = whyNotRestorable(file, progress);
    if (!reason.isEmpty()) {
        throw basic::RunTimeError(basic::ErrorNumber::InvalidArgument, reason);
    }
    const BackupFolder folder(databasesFolder);
    folder.create();
    const QString current = folder.pestFile();
    const QString temporary = current + RestoreSuffix;
    removeRestoreLeftovers(databasesFolder);
    const auto removeTemporary = qScopeGuard([&] { removeRestoreLeftovers(databasesFolder); });
    {
        const std::unique_ptr<dao::Database> source = dao::Workspace::OpenDatabase(file, false, true, connectText());
        source->backupTo(temporary);
    }
    QFileInfo::exists(current) ? basic::copyPermissions(current, temporary) : basic::followFolder(temporary);
    QString replaced = preserveReplaced(folder);
    moveOver(temporary, current);
    return replaced;
}

void removeRestoreLeftovers(const QString &databasesFolder)
{
    const QDir folder(databasesFolder);
    for (const QString &name : folder.entryList({fileName(DatabaseFile::Pest) + QStringLiteral(".*.new*")}, QDir::Files)) {
        QFile::remove(folder.filePath(name));
    }
}

} // namespace store
