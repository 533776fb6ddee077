// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Backups.h"

#include "platform/basic/Clock.h"
#include "platform/basic/DiskSync.h"
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

/// The name of a file on its way to `target`, of this process alone; whatever is left under it goes with the object.
class FileBeside
{
public:
    explicit FileBeside(const QString &target)
        : path_(QStringLiteral("%1.%2.new").arg(target).arg(QCoreApplication::applicationPid()))
    {
        QFile::remove(path_);
    }
    ~FileBeside() { QFile::remove(path_); }
    FileBeside(const FileBeside &) = delete;
    FileBeside &operator=(const FileBeside &) = delete;
    const QString &path() const { return path_; }

private:
    QString path_;
};

void makeFolder(const QString &folder)
{
    if (!QDir().mkpath(folder)) {
        fail(QStringLiteral("The folder %1 could not be made.").arg(folder));
    }
}

/// Halves of copies that a killed program left; one of today may still be in the making.
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
        if (days > BackupDaysKept) {
            QFile::remove(backup.path);
        }
    }
}

/// A copy of a damaged file would in time push the good ones out.
void refuseDamage(const QString &copy, const QString &source)
{
    const std::unique_ptr<dao::Database> database = dao::Workspace::OpenDatabase(copy, false, true, connectText());
    if (const QStringList faults = database->checkPages(); !faults.isEmpty()) {
        fail(QStringLiteral("%1 is damaged (%2). It was not copied, and the earlier copies are as they were.")
                 .arg(source, faults.front()));
    }
}

void copyTo(const QString &target, const dao::Database &database, const QString &databasesFolder)
{
    makeFolder(backupFolder(databasesFolder));
    const FileBeside beside(target);
    database.backupTo(beside.path());
    refuseDamage(beside.path(), database.Name());
    moveOver(beside.path(), target);
    removeOldest(databasesFolder);
    removeLeftovers(databasesFolder);
}

/// `stem`.mdb, or the next of `stem`-2.mdb, `stem`-3.mdb ... that no file bears.
QString freePlace(const QString &stem)
{
    QString place = stem + QStringLiteral(".mdb");
    for (int number = 2; QFileInfo::exists(place); ++number) {
        place = QStringLiteral("%1-%2.mdb").arg(stem).arg(number);
    }
    return place;
}

/// Brings a file whose last program was killed to rest, so that no rollback journal belongs to it any more. A file that cannot
/// be opened keeps its journal, and both are put aside together; a file that somebody has open stops the restore.
void bringToRest(const QString &file)
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

/// Where the replaced file goes: a name of its own that no listing takes for a dated copy.
QString placeForReplaced(const QString &databasesFolder)
{
    return freePlace(backupFolder(databasesFolder)
                     + QStringLiteral("/PestMon-replaced-%1").arg(basic::Clock::now().toString(TimeFormat)));
}

QString putAside(const QString &databasesFolder)
{
    const QString current = pestFile(databasesFolder);
    if (!QFileInfo::exists(current)) {
        return {};
    }
    bringToRest(current);
    QString place = placeForReplaced(databasesFolder);
    if (!QFile::copy(current, place)) {
        fail(QStringLiteral("The present %1 could not be kept as %2; nothing was restored.").arg(current, place));
    }
    // A power cut must find one of the two, and the folder's names with them.
    basic::syncToDisk(place);
    basic::syncToDisk(backupFolder(databasesFolder));
    // A journal left beside the restored file would be played into the wrong file.
    const QString journal = QStringLiteral("-journal");
    if (QFileInfo::exists(current + journal)) {
        moveOver(current + journal, place + journal);
    }
    return place;
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
    // Open for writing, since a file that a killed program left half written cannot be read otherwise.
    const std::unique_ptr<dao::Database> database =
        dao::Workspace::OpenDatabase(pestFile(databasesFolder), false, false, connectText());
    QString target = copyOfDay(databasesFolder, basic::Clock::today());
    if (QFileInfo::exists(target)) {
        target = freePlace(backupFolder(databasesFolder)
                           + QStringLiteral("/PestMon-%1").arg(basic::Clock::now().toString(TimeFormat)));
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
    // The first copy of a day bears no time, so its name without the suffix comes before the others'.
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
                return QStringLiteral("%1 is no copy of %2: the table %3 is missing.")
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
    const FileBeside beside(current);
    {
        const std::unique_ptr<dao::Database> source = dao::Workspace::OpenDatabase(file, false, true, connectText());
        source->backupTo(beside.path());
    }
    QString kept = putAside(databasesFolder);
    moveOver(beside.path(), current);
    return kept;
}

} // namespace store
