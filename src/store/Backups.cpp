// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Backups.h"

#include "platform/basic/Clock.h"
#include "platform/basic/DiskSync.h"
#include "platform/dao/Workspace.h"
#include "store/Schema.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace store
{

namespace
{

const QString DayFormat = QStringLiteral("yyyy-MM-dd");
const QString TimeFormat = QStringLiteral("yyyy-MM-dd-HHmmss");

QString pestFile(const QString &databasesFolder)
{
    return databasesFolder + u'/' + fileName(DatabaseFile::Pest);
}

QString backupFolder(const QString &databasesFolder)
{
    return databasesFolder + QStringLiteral("/Backups");
}

QString copyOfDay(const QString &databasesFolder, QDate day)
{
    return backupFolder(databasesFolder) + QStringLiteral("/PestMon-%1.mdb").arg(day.toString(DayFormat));
}

std::filesystem::path native(const QString &path)
{
    return std::filesystem::path(path.toStdU16String());
}

[[noreturn]] void fail(const QString &what)
{
    throw basic::RunTimeError(basic::ErrorNumber::PathFileAccess, what);
}

/// Replaces the target in one step, so that there is a whole file under its name at every moment.
void moveOver(const QString &from, const QString &to)
{
    std::error_code error;
    std::filesystem::rename(native(from), native(to), error);
    if (error) {
        fail(QStringLiteral("%1 could not be written: %2.").arg(to, QString::fromStdString(error.message())));
    }
    basic::syncToDisk(QFileInfo(to).absolutePath());
}

/// The name of a file that becomes `target`, for this process alone; what is left under that name is removed with the object.
class TemporaryFile
{
public:
    explicit TemporaryFile(const QString &target)
        : path_(QStringLiteral("%1.%2.new").arg(target).arg(QCoreApplication::applicationPid()))
    {
        QFile::remove(path_);
    }
    ~TemporaryFile() { QFile::remove(path_); }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;
    const QString &path() const { return path_; }

private:
    QString path_;
};

void makeFolder(const QString &folder)
{
    if (!QDir().mkpath(folder)) {
        fail(QStringLiteral("The folder %1 could not be created.").arg(folder));
    }
}

/// Unfinished copies of a killed program; a recent one may be that of a running program.
void removeLeftovers(const QString &databasesFolder)
{
    const QDir folder(backupFolder(databasesFolder));
    const QDateTime yesterday = QDateTime::currentDateTime().addDays(-1);
    for (const QFileInfo &half : folder.entryInfoList({QStringLiteral("*.new"), QStringLiteral("*.part")}, QDir::Files)) {
        if (half.lastModified() < yesterday) {
            QFile::remove(half.filePath());
        }
    }
}

void removeOldest(const QString &databasesFolder)
{
    int days = 0;
    QDate day;
    for (const Backup &backup : listBackups(databasesFolder)) {
        if (backup.day != day) {
            day = backup.day;
            ++days;
        }
        if (days > BackupDays) {
            QFile::remove(backup.path);
        }
    }
}

/// Copies of a damaged file would in time replace the good ones.
void refuseDamage(const QString &copy, const QString &source)
{
    const std::unique_ptr<dao::Database> database = dao::Workspace::OpenDatabase(copy, false, true, connectText());
    if (const QStringList faults = database->checkPages(); !faults.isEmpty()) {
        fail(QStringLiteral("%1 is damaged (%2). It was not copied, and the previous copies are unchanged.")
                 .arg(source, faults.front()));
    }
}

void copyTo(const QString &target, const dao::Database &database, const QString &databasesFolder)
{
    makeFolder(backupFolder(databasesFolder));
    const TemporaryFile temporary(target);
    database.backupTo(temporary.path());
    refuseDamage(temporary.path(), database.Name());
    moveOver(temporary.path(), target);
    removeOldest(databasesFolder);
    removeLeftovers(databasesFolder);
}

/// `stem`.mdb, or the first free name of `stem`-2.mdb, `stem`-3.mdb ...
QString freeName(const QString &stem)
{
    QString name = stem + QStringLiteral(".mdb");
    for (int number = 2; QFileInfo::exists(name); ++number) {
        name = QStringLiteral("%1-%2.mdb").arg(stem).arg(number);
    }
    return name;
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

/// Path for the replaced file: a name that is not listed as a dated copy.
QString pathForReplaced(const QString &databasesFolder)
{
    return freeName(backupFolder(databasesFolder)
                    + QStringLiteral("/PestMon-replaced-%1").arg(basic::Clock::now().toString(TimeFormat)));
}

QString preserveReplaced(const QString &databasesFolder)
{
    const QString current = pestFile(databasesFolder);
    if (!QFileInfo::exists(current)) {
        return {};
    }
    rollBackJournal(current);
    QString replaced = pathForReplaced(databasesFolder);
    if (!QFile::copy(current, replaced)) {
        fail(QStringLiteral("The present %1 could not be copied to %2; nothing was restored.").arg(current, replaced));
    }
    // After a power cut one of the two must exist, under its name in the folder.
    basic::syncToDisk(replaced);
    basic::syncToDisk(backupFolder(databasesFolder));
    // A journal left with the restored file would be rolled back into the wrong file.
    const QString journal = QStringLiteral("-journal");
    if (QFileInfo::exists(current + journal)) {
        moveOver(current + journal, replaced + journal);
    }
    return replaced;
}

} // namespace

void backupForToday(SessionContext &session)
{
    if (!session.dbPest.isSet()) {
        return;
    }
    const QString folder = QFileInfo(session.dbPest->Name()).absolutePath();
    const QString target = copyOfDay(folder, basic::Clock::today());
    if (!QFileInfo::exists(target)) {
        copyTo(target, *session.dbPest, folder);
    }
}

QString backUpNow(const QString &databasesFolder)
{
    // Open for writing, since a file with the journal of a killed program cannot be read otherwise.
    const std::unique_ptr<dao::Database> database =
        dao::Workspace::OpenDatabase(pestFile(databasesFolder), false, false, connectText());
    QString target = copyOfDay(databasesFolder, basic::Clock::today());
    if (QFileInfo::exists(target)) {
        target =
            freeName(backupFolder(databasesFolder) + QStringLiteral("/PestMon-%1").arg(basic::Clock::now().toString(TimeFormat)));
    }
    copyTo(target, *database, databasesFolder);
    return target;
}

std::vector<Backup> listBackups(const QString &databasesFolder)
{
    static const QRegularExpression dated(QStringLiteral("^PestMon-(\\d{4}-\\d{2}-\\d{2})(-\\d{6}(-\\d+)?)?\\.mdb$"));
    std::vector<Backup> backups;
    const QDir folder(backupFolder(databasesFolder));
    for (const QString &name : folder.entryList(QDir::Files)) {
        const QRegularExpressionMatch match = dated.match(name);
        const QDate day = QDate::fromString(match.captured(1), DayFormat);
        if (day.isValid()) {
            backups.push_back({folder.filePath(name), day});
        }
    }
    // The first copy of a day has no time in its name, so its name without the suffix comes before the others'.
    std::sort(backups.begin(), backups.end(), [](const Backup &left, const Backup &right) {
        return QFileInfo(left.path).completeBaseName() > QFileInfo(right.path).completeBaseName();
    });
    return backups;
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
    makeFolder(backupFolder(databasesFolder));
    const QString current = pestFile(databasesFolder);
    const TemporaryFile temporary(current);
    {
        const std::unique_ptr<dao::Database> source = dao::Workspace::OpenDatabase(file, false, true, connectText());
        source->backupTo(temporary.path());
    }
    QString replaced = preserveReplaced(databasesFolder);
    moveOver(temporary.path(), current);
    return replaced;
}

} // namespace store
