// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/BackupFolder.h"

#include "platform/basic/Clock.h"
#include "platform/basic/Permissions.h"
#include "platform/basic/RunTimeError.h"
#include "store/Schema.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStorageInfo>
#include <QThread>

#include <algorithm>
#include <numeric>

using basic::ErrorNumber;
using basic::RunTimeError;

namespace store
{

namespace
{

const QString DayFormat = QStringLiteral("yyyy-MM-dd");
const QString TimeFormat = QStringLiteral("yyyy-MM-dd-HHmmss");
constexpr qint64 Megabyte = 1024 * 1024;
constexpr qint64 MinFreeBytes = 100 * Megabyte;
constexpr std::size_t MinDays = 3;

/// `stem`.mdb, or the first free name of `stem`-2.mdb, `stem`-3.mdb ...
QString freeName(const QString &stem)
{
    QString name = stem + QStringLiteral(".mdb");
    for (int number = 2; QFileInfo::exists(name); ++number) {
        name = QStringLiteral("%1-%2.mdb").arg(stem).arg(number);
    }
    return name;
}

qint64 sizeOf(const std::vector<Backup> &copies)
{
    return std::accumulate(copies.begin(), copies.end(), qint64{0},
                           [](qint64 sum, const Backup &copy) { return sum + QFileInfo(copy.path).size(); });
}

void remove(const std::vector<Backup> &copies, const QString &except)
{
    for (const Backup &copy : copies) {
        if (copy.path != except) {
            QFile::remove(copy.path);
        }
    }
}

} // namespace

QString BackupFolder::pestFile() const
{
    return databases_ + u'/' + fileName(DatabaseFile::Pest);
}

QString BackupFolder::copyOfDay(QDate day) const
{
    return path() + QStringLiteral("/PestMon-%1.mdb").arg(day.toString(DayFormat));
}

QString BackupFolder::freeCopyName() const
{
    return freeName(path() + QStringLiteral("/PestMon-") + basic::Clock::now().toString(TimeFormat));
}

QString BackupFolder::freeReplacedName() const
{
    return freeName(path() + QStringLiteral("/PestMon-replaced-") + basic::Clock::now().toString(TimeFormat));
}

std::vector<Backup> BackupFolder::copies() const
{
    static const QRegularExpression dated(QStringLiteral("^PestMon-(\\d{4}-\\d{2}-\\d{2})(-\\d{6}(-\\d+)?)?\\.mdb$"));
    std::vector<Backup> copies;
    const QDir folder(path());
    for (const QString &name : folder.entryList(QDir::Files)) {
        const QRegularExpressionMatch match = dated.match(name);
        const QDate day = QDate::fromString(match.captured(1), DayFormat);
        if (day.isValid()) {
            copies.push_back({folder.filePath(name), day});
        }
    }
    // The first copy of a day has no time in its name, so its name without the suffix comes before the others'.
    std::sort(copies.begin(), copies.end(), [](const Backup &left, const Backup &right) {
        return QFileInfo(left.path).completeBaseName() > QFileInfo(right.path).completeBaseName();
    });
    return copies;
}

void BackupFolder::create() const
{
    if (QFileInfo(path()).isDir()) {
        return;
    }
    if (!QFileInfo(databases_).isDir()) {
        throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("The folder %1 is gone.").arg(databases_));
    }
    if (!basic::makeFolder(path())) {
        throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("The folder %1 could not be created.").arg(path()));
    }
}

std::unique_ptr<basic::FileLock> BackupFolder::lock() const
{
    constexpr qint64 MaxWaitMilliseconds = 60'000;
    constexpr unsigned long RetryMilliseconds = 100;
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        if (auto lock = basic::FileLock::tryLock(path() + QStringLiteral("/copying.lock"))) {
            return lock;
        }
        if (waited.elapsed() > MaxWaitMilliseconds) {
            throw RunTimeError(
                ErrorNumber::PermissionDenied,
                QStringLiteral("Another program is making a copy in %1. Try again when it has finished.").arg(path()));
        }
        QThread::msleep(RetryMilliseconds);
    }
}

void BackupFolder::removeLeftovers() const
{
    const QDir folder(path());
    const QStringList unfinished{QStringLiteral("*.new"), QStringLiteral("*.part"), QStringLiteral("*.new-journal"),
                                 QStringLiteral("*.part-journal"), QStringLiteral("qt_temp.??????")};
    for (const QString &name : folder.entryList(unfinished, QDir::Files)) {
        QFile::remove(folder.filePath(name));
    }
}

std::vector<std::vector<Backup>> BackupFolder::days(QDate today) const
{
    std::vector<std::vector<Backup>> days;
    for (const Backup &copy : copies()) {
        if (days.empty() || days.back().front().day != copy.day) {
            days.emplace_back();
        }
        days.back().push_back(copy);
    }
    std::stable_partition(days.begin(), days.end(), [today](const auto &copies) { return copies.front().day <= today; });
    return days;
}

void BackupFolder::requireSpace(qint64 bytes, QDate today) const
{
    const qint64 needed = bytes + std::max(bytes, MinFreeBytes);
    std::vector<std::vector<Backup>> all = days(today);
    qint64 free = QStorageInfo(path()).bytesAvailable();
    std::size_t retained = all.size();
    for (qint64 sum = free; sum < needed && retained > MinDays;) {
        sum += sizeOf(all[--retained]);
        free = sum >= needed ? sum : free;
    }
    if (free < needed) {
        throw RunTimeError(
            ErrorNumber::DiskFull,
            QStringLiteral("The disk of %1 has %2 MB free, and a copy needs %3 MB to leave space for a day's work.")
                .arg(path())
                .arg(QStorageInfo(path()).bytesAvailable() / Megabyte)
                .arg(needed / Megabyte));
    }
    for (; all.size() > retained; all.pop_back()) {
        remove(all.back(), {});
    }
}

void BackupFolder::removeOldest(QDate today, const QString &justMade) const
{
    std::vector<std::vector<Backup>> all = days(today);
    for (; all.size() > BackupDays; all.pop_back()) {
        remove(all.back(), justMade);
    }
}

} // namespace store
