// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Staging.h"

#include "platform/basic/DiskSync.h"
#include "platform/basic/Permissions.h"
#include "platform/basic/RunTimeError.h"
#include "platform/basic/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

using basic::ErrorNumber;
using basic::RunTimeError;

Staging::Staging(const QString &databasesFolder) : target_(QDir(databasesFolder).absolutePath())
{
    if (QFileInfo::exists(target_) && !QFileInfo(target_).isDir()) {
        throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("%1 is not a folder.").arg(target_));
    }
    for (const store::DatabaseFile file : store::AllDatabaseFiles) {
        if (const auto present = basic::findPath(target_ + u'/' + store::fileName(file))) {
            throw RunTimeError(ErrorNumber::PathFileAccess,
                               QStringLiteral("%1 exists already and is left as it is; choose another folder.").arg(*present));
        }
    }
    const QString parent = QFileInfo(target_).absolutePath();
    basic::makeFolder(parent);
    staged_ = std::make_unique<QTemporaryDir>(target_ + QStringLiteral(".new-XXXXXX"));
    if (!staged_->isValid()) {
        throw RunTimeError(ErrorNumber::PathFileAccess,
                           QStringLiteral("Nothing can be written in %1: %2.").arg(parent, staged_->errorString()));
    }
}

void Staging::createEmpty(dao::FileKind kind) const
{
    for (const store::DatabaseFile file : store::AllDatabaseFiles) {
        store::createDatabaseFile(file, path(file), kind);
    }
}

QString Staging::path(store::DatabaseFile file) const
{
    return staged_->filePath(store::fileName(file));
}

void Staging::moveIn()
{
    basic::followFolder(staged_->path());
    for (const store::DatabaseFile file : store::AllDatabaseFiles) {
        basic::followFolder(path(file));
    }
    basic::syncToDisk(staged_->path());
    // In one step where the target does not exist, so that also a killed program leaves all three or none.
    std::error_code error;
    std::filesystem::rename(staged_->path().toStdU16String(), target_.toStdU16String(), error);
    if (!error) {
        basic::syncToDisk(QFileInfo(target_).absolutePath());
        staged_->setAutoRemove(false);
        return;
    }
    basic::makeFolder(target_);
    QStringList moved;
    for (const store::DatabaseFile file : store::AllDatabaseFiles) {
        const QString to = target_ + u'/' + store::fileName(file);
        if (!QFile::rename(path(file), to)) {
            for (const QString &one : moved) {
                QFile::remove(one);
            }
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
    staging.createEmpty(kind);
    staging.moveIn();
}
