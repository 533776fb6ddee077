// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Staging.h"

#include "platform/basic/DiskSync.h"
#include "platform/basic/Permissions.h"
#include "platform/basic/RunTimeError.h"
#include "platform/basic/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <algorithm>
#include <filesystem>
#include <system_error>

using basic::ErrorNumber;
using basic::RunTimeError;
using store::AllDatabaseFiles;
using store::DatabaseFile;

namespace
{

std::filesystem::path native(const QString &path)
{
    return path.toStdU16String();
}

bool isSameFile(const QString &left, const QString &right)
{
    std::error_code error;
    return std::filesystem::equivalent(native(left), native(right), error) && !error;
}

/// Nothing but what a Staging leaves in its folder.
void removeStaged(const QString &path)
{
    QDir folder(path);
    for (const DatabaseFile file : AllDatabaseFiles) {
        const QString stem = QFileInfo(store::fileName(file)).completeBaseName();
        for (const QString &name :
             folder.entryList({stem + QStringLiteral(".mdb*"), stem + QStringLiteral(".ldb")}, QDir::Files)) {
            folder.remove(name);
        }
    }
    folder.rmdir(path);
}

} // namespace

void Staging::Unlocker::operator()(basic::FileLock *lock) const
{
    const QString path = lock->path();
    const bool isRemoved = QFile::remove(path);
    delete lock;
    if (!isRemoved) {
        // Where an open file cannot be removed; one that another program has opened meanwhile cannot be either.
        QFile::remove(path);
    }
}

Staging::Staging(const QString &databasesFolder) : target_(QDir(databasesFolder).absolutePath())
{
    if (QFileInfo::exists(target_) && !QFileInfo(target_).isDir()) {
        throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("%1 is not a folder.").arg(target_));
    }
    basic::makeFolder(QFileInfo(target_).absolutePath());
    lock();
    removeLeftovers();
    requireNew();
    makeFolder();
}

Staging::~Staging()
{
    if (!staged_.isEmpty()) {
        removeStaged(staged_);
    }
}

void Staging::lock()
{
    const QString parent = QFileInfo(target_).absolutePath();
    basic::describing(ErrorNumber::PathFileAccess, QStringLiteral("Nothing can be written in %1.").arg(parent),
                      [this] { lock_.reset(basic::FileLock::tryLock(target_ + QStringLiteral(".new.lock")).release()); });
    if (!lock_) {
        throw RunTimeError(
            ErrorNumber::PermissionDenied,
            QStringLiteral("Another program is making databases in %1. Try again when it has finished.").arg(target_));
    }
}

/// While files are moved, the staged folder has all three. What is in the target under a second name then came from a program
/// that did not move them all.
void Staging::removeLeftovers()
{
    const QString name = QFile::decodeName(lock_->text());
    const QRegularExpression ours(QRegularExpression::anchoredPattern(QRegularExpression::escape(QFileInfo(target_).fileName())
                                                                      + QStringLiteral("\\.new-[0-9a-f]{8}")));
    const QString staged = QFileInfo(target_).absolutePath() + u'/' + name;
    if (!ours.match(name).hasMatch() || !QFileInfo(staged).isDir()) {
        return;
    }
    QStringList moved;
    std::size_t present = 0;
    for (const DatabaseFile file : AllDatabaseFiles) {
        const QString stagedFile = staged + u'/' + store::fileName(file);
        present += QFile::exists(stagedFile) ? 1 : 0;
        if (isSameFile(stagedFile, targetOf(file))) {
            moved.append(targetOf(file));
        }
    }
    if (present == std::size(AllDatabaseFiles) && moved.size() < static_cast<qsizetype>(present)) {
        std::for_each(moved.begin(), moved.end(), [](const QString &path) { QFile::remove(path); });
    }
    removeStaged(staged);
}

void Staging::requireNew() const
{
    for (const DatabaseFile file : AllDatabaseFiles) {
        if (const auto present = basic::findPath(targetOf(file))) {
            throw RunTimeError(ErrorNumber::PathFileAccess,
                               QStringLiteral("%1 exists already and is left as it is; choose another folder.").arg(*present));
        }
    }
}

void Staging::makeFolder()
{
    const QString suffix = QStringLiteral(".new-%1").arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'));
    const QString staged = target_ + suffix;
    if (!lock_->setText(QFile::encodeName(QFileInfo(staged).fileName())) || !QDir().mkdir(staged)) {
        throw RunTimeError(
            ErrorNumber::PathFileAccess,
            QStringLiteral("%1 cannot be made: nothing can be written next to it. The disk may be full.").arg(target_));
    }
    staged_ = staged;
    QFile::setPermissions(staged_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QString Staging::targetOf(DatabaseFile file) const
{
    return target_ + u'/' + store::fileName(file);
}

QString Staging::path(DatabaseFile file) const
{
    return staged_ + u'/' + store::fileName(file);
}

void Staging::fill(const std::function<void()> &body) const
{
    try {
        body();
    } catch (const RunTimeError &error) {
        throw RunTimeError(error.number(), QString(error.description()).replace(staged_, target_));
    }
}

void Staging::moveIn()
{
    basic::followFolder(staged_);
    for (const DatabaseFile file : AllDatabaseFiles) {
        basic::followFolder(path(file));
    }
    basic::syncToDisk(staged_);
    if (!moveFolder()) {
        moveFiles();
    }
}

/// In one step where the target does not exist, so that also a killed program leaves all three or none.
bool Staging::moveFolder()
{
    std::error_code error;
    std::filesystem::rename(native(staged_), native(target_), error);
    if (error) {
        return false;
    }
    staged_.clear();
    basic::syncToDisk(QFileInfo(target_).absolutePath());
    return true;
}

/// Under a second name, by which the next program recognises the files of one that was killed in between. Where the file system
/// has no second names they are moved, and those of a killed program stay.
void Staging::moveFiles()
{
    basic::makeFolder(target_);
    QStringList moved;
    for (const DatabaseFile file : AllDatabaseFiles) {
        const QString to = targetOf(file);
        std::error_code error;
        std::filesystem::create_hard_link(native(path(file)), native(to), error);
        if (error && !QFile::rename(path(file), to)) {
            std::for_each(moved.begin(), moved.end(), [](const QString &one) { QFile::remove(one); });
            throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("%1 cannot be written; nothing was created.").arg(to));
        }
        basic::followFolder(to);
        moved.append(to);
    }
    basic::syncToDisk(target_);
}

void createDatabases(const QString &databasesFolder, dao::FileKind kind)
{
    Staging staging(databasesFolder);
    staging.fill([&] {
        for (const DatabaseFile file : AllDatabaseFiles) {
            store::createDatabaseFile(file, staging.path(file), kind);
        }
    });
    staging.moveIn();
}
